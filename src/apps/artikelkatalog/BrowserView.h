#pragma once
#include <QByteArray>
#include <QString>

QT_BEGIN_NAMESPACE
class QSettings;
QT_END_NAMESPACE

namespace mkl {

class ArtCatBrowser;

/// How the user has arranged the browser: kept in the settings from one run to the next, and over catalogues.
class BrowserView {
public:
    /// The settings must live longer.
    explicit BrowserView(QSettings& settings);

    /// A switch of the view menu, by the name of its entry.
    bool isOn(const QString& entry, bool otherwise) const;
    void setOn(const QString& entry, bool on);

    /// The panes' shares of the width.
    void keepWidths(const ArtCatBrowser& browser);
    /// Nothing where none were kept. The browser must have its size.
    void applyWidths(ArtCatBrowser& browser) const;

private:
    QSettings& settings_;
};

} // namespace mkl
