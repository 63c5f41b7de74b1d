#pragma once
#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QIcon;
class QObject;
class QPixmap;
QT_END_NAMESPACE

namespace mkl {

class ImageList;

/// An image list with the folders and article marks of the catalogue under all their keys. The parent owns it.
ImageList* catalogueImages(QObject* parent);

enum class DragPicture { MoveArticle, CopyArticle, MoveFolder, CopyFolder, NoDrop };

/// What the pointer shows during a drag: an arrow, and what is dragged. Drawn for the finest screen.
QPixmap dragPicture(DragPicture picture);

/// The picture of the programs.
QIcon applicationIcon();

} // namespace mkl
