#pragma once
#include "browser/ArtCatBrowserEnums.h"

#include <QList>
#include <QPointer>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QFormLayout;
class QLineEdit;
QT_END_NAMESPACE

namespace mkl {

class ArtCatBrowser;

/// The filters of the three panes and of the workgroup, to be tried out.
class FilterPanel : public QWidget {
    Q_OBJECT

public:
    explicit FilterPanel(QWidget* parent = nullptr);

    /// The browser that is filtered: its filters become those of the panel. Null while there is none.
    void setBrowser(ArtCatBrowser* browser);
    /// Sets what has changed and reads the panes that it concerns.
    void apply();

Q_SIGNALS:
    /// The user wants what stands here now.
    void applyWanted();

private:
    struct PaneFilter {
        acbPanes pane;
        QLineEdit* edit;
    };

    QLineEdit* addEdit(QFormLayout& form, const QString& name, const QString& caption, const QString& example);
    QList<acbPanes> setChanged();
    bool setWorkgroup();
    void clear();

    QPointer<ArtCatBrowser> browser_;
    QList<PaneFilter> filters_;
    QLineEdit* workgroup_ = nullptr;
};

} // namespace mkl
