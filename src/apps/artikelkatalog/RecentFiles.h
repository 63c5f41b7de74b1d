#pragma once
#include <QStringList>

QT_BEGIN_NAMESPACE
class QSettings;
QT_END_NAMESPACE

namespace mkl {

/// The catalogues that were opened last, the latest first, kept in the user's settings: files as absolute paths,
/// those on servers as addresses, which hold no password.
class RecentFiles {
public:
    static constexpr int MaximalCount = 8;

    /// The settings must outlive it.
    explicit RecentFiles(QSettings& settings)
        : settings_(settings) {}

    QStringList files() const;
    void add(const QString& file);
    void remove(const QString& file);

private:
    QStringList without(const QString& file) const;
    void store(const QStringList& files);

    QSettings& settings_;
};

} // namespace mkl
