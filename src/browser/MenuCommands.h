#pragma once
#include <QString>

namespace mkl {

class ArtCatBrowserPrivate;

/// What the entries of the context menus do.
class MenuCommands {
public:
    explicit MenuCommands(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// The user chose the entry. The control may be gone afterwards.
    void run(const QString& entry);
    /// Whether an entry of that name does something.
    static bool knows(const QString& entry);

    /// They tell the host; without a selected row nothing happens.
    void kTV_Properties();
    void kLV_Properties();
    void KLVArt_Properties();
    /// All four entries to close.
    void close();

private:
    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
