#include "apps/artikelkatalog/KeyStore.h"

#include <QEventLoop>
#include <QTimer>
#include <qt6keychain/keychain.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

// The store may ask the user to unlock it.
constexpr int patience = 60'000; // ms

class PlatformKeyStore final : public KeyStore {
public:
    std::optional<QString> find(const QString& entry) override {
        QKeychain::ReadPasswordJob job(service());
        const QKeychain::Error error = run(job, entry);
        if (error == QKeychain::EntryNotFound) return QString();
        return error == QKeychain::NoError ? std::optional(job.textData()) : std::nullopt;
    }
    bool keep(const QString& entry, const QString& password) override {
        QKeychain::WritePasswordJob job(service());
        job.setTextData(password);
        return run(job, entry) == QKeychain::NoError;
    }
    void forget(const QString& entry) override {
        QKeychain::DeletePasswordJob job(service());
        run(job, entry);
    }

private:
    static QString service() { return u"artikelkatalog"_s; }

    /// The answer comes over the message queue; the user cannot do anything else meanwhile.
    static QKeychain::Error run(QKeychain::Job& job, const QString& entry) {
        job.setAutoDelete(false);
        job.setInsecureFallback(false); // a file is no key store
        job.setKey(entry);
        QEventLoop loop;
        bool isDone = false;
        QObject::connect(&job, &QKeychain::Job::finished, &loop, [&] {
            isDone = true;
            loop.quit();
        });
        QTimer::singleShot(patience, &loop, &QEventLoop::quit);
        job.start();
        if (!isDone) loop.exec(QEventLoop::ExcludeUserInputEvents);
        return isDone ? job.error() : QKeychain::OtherError;
    }
};

KeyStore* replaced = nullptr;

} // namespace

KeyStore& keyStore() {
    static PlatformKeyStore platform;
    return replaced ? *replaced : platform;
}

KeyStore* setKeyStore(KeyStore* store) {
    return std::exchange(replaced, store);
}

} // namespace mkl
