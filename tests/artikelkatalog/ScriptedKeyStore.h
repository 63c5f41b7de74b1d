#pragma once
// A key store as a test wants it.
#include "apps/artikelkatalog/KeyStore.h"

#include <QMap>

namespace mkl {

class ScriptedKeyStore final : public KeyStore {
public:
    ScriptedKeyStore()
        : former_(setKeyStore(this)) {}
    ~ScriptedKeyStore() override { setKeyStore(former_); }
    Q_DISABLE_COPY_MOVE(ScriptedKeyStore)

    std::optional<QString> find(const QString& entry) override {
        ++asked;
        return isThere ? std::optional(entries.value(entry)) : std::nullopt;
    }
    bool keep(const QString& entry, const QString& password) override {
        if (isThere && canKeep) entries[entry] = password;
        return isThere && canKeep;
    }
    void forget(const QString& entry) override { entries.remove(entry); }

    QMap<QString, QString> entries;
    bool isThere = true;
    bool canKeep = true;
    int asked = 0;

private:
    KeyStore* former_;
};

} // namespace mkl
