#pragma once
#include <QDialog>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QLineEdit;
QT_END_NAMESPACE

namespace mkl {

/// Asks for the password of a user on a server. It is shown nowhere and leaves the dialog only by Password().
class PasswordDialog : public QDialog {
    Q_OBJECT

public:
    struct Question {
        QString catalogue; ///< as windows call it
        QString user;
        bool isWrong = false;      ///< another password was refused
        bool canRemember = false;  ///< there is a key store
        bool isRemembered = false; ///< it keeps one for that user
    };

    explicit PasswordDialog(const Question& question, QWidget* parent = nullptr);

    QString Password() const;
    bool Remember() const; ///< the key store is to keep it

private:
    QLineEdit* password_;
    QCheckBox* remember_;
};

} // namespace mkl
