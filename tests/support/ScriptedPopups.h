#pragma once
// Reads context menus as lines and chooses by a list of names.
#include "controls/PopupMenu.h"

#include <QList>
#include <QStringList>
#include <gtest/gtest.h>

namespace mkl {

/// Every menu is closed at once: with the next choice of the list, or without one. A choice that the menu does not
/// offer, enabled, fails the test.
class ScriptedPopups final : public PopupRunner {
public:
    explicit ScriptedPopups(QStringList list = {})
        : choices(std::move(list))
        , former_(setPopupRunner(this)) {}
    ~ScriptedPopups() override {
        setPopupRunner(former_);
        EXPECT_TRUE(choices.isEmpty()) << choices.size() << " choices without a menu";
    }
    Q_DISABLE_COPY_MOVE(ScriptedPopups)

    void popUp(QWidget&, const PopupMenu& menu, const QPoint& point, const PopupChoice& chosen) override {
        shown.append(menu.name);
        lines = linesOf(menu.rows, {});
        accessibleName = menu.accessibleName;
        points.append(point);
        if (whileShown) whileShown();
        if (choices.isEmpty()) return;
        const QString choice = choices.takeFirst();
        EXPECT_TRUE(offers(menu.rows, choice)) << choice.toStdString();
        chosen(choice);
    }

    /// Whether the last menu has a line of that entry.
    bool has(const QString& name) const {
        for (const QString& line : lines)
            if (line.trimmed().section(u'|', 0, 0) == name) return true;
        return false;
    }
    /// The names of the lines of the last menu, without submenus' indents.
    QStringList names() const {
        QStringList result;
        for (const QString& line : lines)
            result.append(line.trimmed().section(u'|', 0, 0));
        return result;
    }

    QStringList choices; ///< taken from the front
    QStringList shown;   ///< the names of the menus, in their order
    /// The last menu: "name|caption" with "|grey" and "|checked" where it is; rows of submenus further in.
    QStringList lines;
    QString accessibleName;
    QList<QPoint> points;
    std::function<void()> whileShown; ///< what happens before the choice

private:
    static QStringList linesOf(const std::vector<PopupRow>& rows, const QString& indent) {
        QStringList result;
        for (const PopupRow& row : rows) {
            QString line = indent + row.name + u'|' + (row.isSeparator() ? QStringLiteral("-") : row.caption);
            if (!row.enabled) line += QStringLiteral("|grey");
            if (row.checked == true) line += QStringLiteral("|checked");
            result.append(line);
            result.append(linesOf(row.rows, indent + QStringLiteral("  ")));
        }
        return result;
    }
    static bool offers(const std::vector<PopupRow>& rows, const QString& name) {
        for (const PopupRow& row : rows) {
            const bool isThis = row.name == name && row.enabled && !row.isSeparator() && row.rows.empty();
            if (isThis || (row.enabled && offers(row.rows, name))) return true;
        }
        return false;
    }

    PopupRunner* former_;
};

} // namespace mkl
