#pragma once
#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QIcon;
class QObject;
QT_END_NAMESPACE

namespace mkl {

class ImageList;

/// An image list with the folders and article marks of the catalogue under all their keys. The parent owns it.
ImageList* catalogueImages(QObject* parent);

/// The picture of the programs.
QIcon applicationIcon();

} // namespace mkl
