#pragma once
#include <QString>
#include <optional>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace mkl {

/// The way from an .mdb or .accdb file to a catalogue, with the questions to the user.
class CatalogueImporter {
public:
    /// The dialogs belong to that window.
    explicit CatalogueImporter(QWidget& window)
        : window_(window) {}

    /// Offers to import the source into a catalogue of the same name beside it, or to open that one if it exists.
    /// Gives the catalogue to open; nothing if the user does not want it or the import failed, which was told then.
    std::optional<QString> catalogueOf(const QString& source) const;

private:
    std::optional<QString> targetFor(const QString& source) const;
    bool import(const QString& source, const QString& target) const;

    QWidget& window_;
};

} // namespace mkl
