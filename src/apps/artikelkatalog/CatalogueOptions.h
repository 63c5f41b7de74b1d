#pragma once
#include "dao/Database.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QComboBox;
class QGridLayout;
class QLabel;
class QSpinBox;
QT_END_NAMESPACE

namespace mkl {

class SenderChoice;

/// What new categories of the catalogue get: their sender, and the digit in which their keys end. OK stores both and
/// leaves the dialog open where that fails.
class CatalogueOptions : public QDialog {
    Q_OBJECT

public:
    /// The choice must outlive the dialog. Raises the errors of reading the catalogue.
    CatalogueOptions(const Ref<dao::Database>& catalogue, SenderChoice& senders, QWidget* parent = nullptr);

    void accept() override;

private:
    void addSender(QGridLayout& grid);
    void addDigit(QGridLayout& grid);
    QLabel* addNote(QGridLayout& grid, const QString& note);
    void store();

    Ref<dao::Database> catalogue_;
    SenderChoice& senders_;
    QComboBox* sender_ = nullptr;
    QSpinBox* digit_ = nullptr;
};

} // namespace mkl
