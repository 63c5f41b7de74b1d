#pragma once
#include <QString>
#include <optional>

namespace mkl {

/// Where the user's platform keeps passwords. Replaceable, so that tests need none.
class KeyStore {
public:
    virtual ~KeyStore() = default;
    /// What is kept under that name, empty for nothing; nothing at all where no key store answers.
    virtual std::optional<QString> find(const QString& entry) = 0;
    /// False if it could not be kept.
    virtual bool keep(const QString& entry, const QString& password) = 0;
    virtual void forget(const QString& entry) = 0;
};

/// The key store in force; that of the platform unless another was set.
KeyStore& keyStore();
/// Puts another one in force and returns the former one; nullptr restores the platform's. The caller keeps ownership.
KeyStore* setKeyStore(KeyStore* store);

} // namespace mkl
