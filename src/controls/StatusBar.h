#pragma once
#include "base/types.h"
#include "controls/ClickDetector.h"

#include <QLabel>
#include <QString>
#include <vector>

namespace mkl {

class StatusBar;

/// One field of a StatusBar, owned by it. A text that does not fit is cut short and shown as a tool tip.
class StatusPanel : public QLabel {
    Q_OBJECT

public:
    const QString& Key() const { return key_; }

    const QString& Text() const { return text_; }
    void setText(const QString& text);

    Single Width() const { return width_; } ///< twips; the last visible panel takes what is left
    void setWidth(Single twips);

    bool Visible() const { return !isHidden(); }
    void setVisible(bool visible) override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    friend class StatusBar;
    StatusPanel(const QString& key, StatusBar& bar);
    void elide();

    StatusBar& bar_;
    QString key_;
    QString text_;
    Single width_;
    ClickDetector clicks_;
};

/// A line of panels within its frame, reached by key.
class StatusBar : public QFrame {
    Q_OBJECT

public:
    explicit StatusBar(QWidget* parent = nullptr);

    /// A key twice is error 35602.
    StatusPanel& addPanel(const QString& key);
    /// The panel of that key, without regard to case; error 35601 when there is none.
    StatusPanel& Panels(const QString& key) const;
    Long PanelCount() const { return static_cast<Long>(panels_.size()); }

    /// A line that stands over the panels until it is empty; they keep their texts. Assistive tools read it as the
    /// description.
    QString Overlay() const;
    void setOverlay(const QString& text);

    /// Keeps that many twips at the end free of panels, for what stands over the bar there.
    void setRoomAtEnd(Single twips);

    QSize sizeHint() const override;

Q_SIGNALS:
    void PanelClick(mkl::StatusPanel* Panel);
    void PanelDblClick(mkl::StatusPanel* Panel);
    void Click();    ///< on the bar beside its panels
    void DblClick(); ///< likewise

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    friend class StatusPanel;
    StatusPanel* find(const QString& key) const;
    void arrange();

    std::vector<StatusPanel*> panels_; // in their order; children of the bar
    QLabel* const overlay_;
    Single roomAtEnd_ = 0; // twips
    ClickDetector clicks_;
};

} // namespace mkl
