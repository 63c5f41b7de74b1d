#pragma once
#include "apps/artikelkatalog/ServerUrl.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QComboBox;
class QGridLayout;
class QLineEdit;
class QPushButton;
class QSpinBox;
QT_END_NAMESPACE

namespace mkl {

/// Asks for a catalogue on a server.
class ServerDialog : public QDialog {
    Q_OBJECT

public:
    /// Begins with those parts.
    explicit ServerDialog(const ServerUrl& preset, QWidget* parent = nullptr);

    /// What the user has chosen.
    QString url() const;

private:
    ServerUrl parts() const;
    void addField(QGridLayout& grid, QWidget& field, const QString& name, const QString& caption);
    QLineEdit* addLine(QGridLayout& grid, const QString& name, const QString& caption, const QString& preset);
    void addPort(QGridLayout& grid, const QString& preset);
    void addEncryption(QGridLayout& grid, const QString& preset);
    void suggestEncryption();
    void allowOk();

    const ServerUrl preset_;
    QLineEdit* host_ = nullptr;
    QSpinBox* port_ = nullptr;
    QLineEdit* database_ = nullptr;
    QLineEdit* user_ = nullptr;
    QComboBox* encryption_ = nullptr;
    QPushButton* ok_ = nullptr;
    bool isEncryptionChosen_ = false; // by the user; until then it follows the host
};

} // namespace mkl
