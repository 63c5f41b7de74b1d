#pragma once
// Statements of people at a site.
#include <QString>

namespace mkl {

inline QString addCategory(int key, const QString& parent, int position) {
    return QStringLiteral(
               "INSERT INTO [ARTIKEL/KATEGORIEN] ([Kategorie-Schlüssel], [Kategoriename], [Parent], [Order], "
               "[Aktiv]) VALUES (%1, 'K%1', %2, %3, -1)")
        .arg(key)
        .arg(parent)
        .arg(position);
}

inline QString moveCategory(int key, int parent) {
    return QStringLiteral("UPDATE [ARTIKEL/KATEGORIEN] SET [Parent]=%1, [LetzteÄnderung]=Now() WHERE "
                          "[Kategorie-Schlüssel]=%2")
        .arg(parent)
        .arg(key);
}

inline QString assign(int article, int category, int position) {
    return QStringLiteral(
               "INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel], [Order]) VALUES (%1, %2, %3)")
        .arg(article)
        .arg(category)
        .arg(position);
}

} // namespace mkl
