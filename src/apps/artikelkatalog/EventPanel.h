#pragma once
#include "browser/ArtCatBrowser.h"

#include <QWidget>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QPlainTextEdit;
QT_END_NAMESPACE

namespace mkl {

/// The events of a browser as they come, one a line, the newest last: for those who write a host.
class EventPanel : public QWidget {
    Q_OBJECT

public:
    explicit EventPanel(QWidget* parent = nullptr);

    /// Shows the events of that browser from now on. It may end before the panel does.
    void watch(ArtCatBrowser& browser);
    void clear();
    QStringList lines() const;

private:
    template<class... Arguments>
    void show(ArtCatBrowser& browser, void (ArtCatBrowser::*signal)(Arguments...), const QString& name);
    void append(const QString& line);

    QPlainTextEdit* text_;
    QCheckBox* mouseMoves_;
};

} // namespace mkl
