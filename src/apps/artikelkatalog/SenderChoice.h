#pragma once
#include "dao/Database.h"

#include <QList>

QT_BEGIN_NAMESPACE
class QSettings;
QT_END_NAMESPACE

namespace mkl {

/// Whose the categories are that the user makes: chosen once per catalogue, kept in the user's settings.
class SenderChoice {
public:
    /// The settings must outlive it.
    explicit SenderChoice(QSettings& settings)
        : settings_(settings) {}

    /// The keys of the catalogue's senders, ascending.
    static QList<Long> sendersOf(dao::Database& catalogue);
    /// The chosen one; the first where nobody has chosen or the chosen one is gone; 0 where there is none.
    Long senderOf(dao::Database& catalogue) const;
    /// Adds the sender to the catalogue if it is not there yet.
    void choose(dao::Database& catalogue, Long sender);

private:
    QSettings& settings_;
};

} // namespace mkl
