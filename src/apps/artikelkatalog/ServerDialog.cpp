#include "apps/artikelkatalog/ServerDialog.h"

#include "base/Texts.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <array>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

constexpr int fieldCharacters = 44;
constexpr int usualPort = 5432;

struct Encryption {
    const char* mode;
    TextId caption;
};

// From the safest to none.
constexpr std::array encryptions{
    Encryption{"verify-full", TextId::ProgramEncryptionVerifyFull},
    Encryption{"verify-ca", TextId::ProgramEncryptionVerifyCa}, Encryption{"require", TextId::ProgramEncryptionRequire},
    Encryption{"prefer", TextId::ProgramEncryptionPrefer}, Encryption{"disable", TextId::ProgramEncryptionDisable}};

} // namespace

ServerDialog::ServerDialog(const ServerUrl& preset, QWidget* parent)
    : QDialog(parent)
    , preset_(preset) {
    setObjectName(u"ServerDialog"_s);
    setWindowTitle(text(TextId::ProgramServerTitle));
    auto* grid = new QGridLayout(this);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    host_ = addLine(*grid, u"Host"_s, text(TextId::ProgramServerHost), preset.host);
    host_->setPlaceholderText(text(TextId::ProgramServerHostExplained));
    addPort(*grid, preset.port);
    database_ = addLine(*grid, u"Database"_s, text(TextId::ProgramServerDatabase), preset.database);
    user_ = addLine(*grid, u"User"_s, text(TextId::ProgramServerUser), preset.user);
    addEncryption(*grid, preset.encryption);
    auto* buttons = new QDialogButtonBox(this);
    ok_ = buttons->addButton(text(TextId::FormOk), QDialogButtonBox::AcceptRole);
    ok_->setObjectName(u"OK"_s);
    buttons->addButton(text(TextId::FormCancel), QDialogButtonBox::RejectRole)->setObjectName(u"Cancel"_s);
    connect(buttons, &QDialogButtonBox::accepted, this, &ServerDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ServerDialog::reject);
    connect(host_, &QLineEdit::textChanged, this, &ServerDialog::suggestEncryption);
    connect(database_, &QLineEdit::textChanged, this, &ServerDialog::allowOk);
    const int row = grid->rowCount();
    grid->setRowMinimumHeight(row, fontMetrics().height());
    grid->addWidget(buttons, row + 1, 0, 1, 2);
    suggestEncryption();
    allowOk();
}

void ServerDialog::addField(QGridLayout& grid, QWidget& field, const QString& name, const QString& caption) {
    auto* label = new QLabel(caption, this);
    label->setBuddy(&field);
    field.setObjectName(name);
    const int row = grid.rowCount();
    grid.addWidget(label, row, 0);
    grid.addWidget(&field, row, 1);
}

QLineEdit* ServerDialog::addLine(QGridLayout& grid, const QString& name, const QString& caption,
                                 const QString& preset) {
    auto* line = new QLineEdit(preset, this);
    line->setMinimumWidth(fieldCharacters * line->fontMetrics().averageCharWidth());
    addField(grid, *line, name, caption);
    return line;
}

void ServerDialog::addPort(QGridLayout& grid, const QString& preset) {
    port_ = new QSpinBox(this);
    port_->setRange(1, 65535);
    port_->setValue(preset.isEmpty() ? usualPort : preset.toInt());
    port_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    addField(grid, *port_, u"Port"_s, text(TextId::ProgramServerPort));
}

void ServerDialog::addEncryption(QGridLayout& grid, const QString& preset) {
    encryption_ = new QComboBox(this);
    for (const Encryption& encryption : encryptions)
        encryption_->addItem(text(encryption.caption), QString::fromLatin1(encryption.mode));
    const int given = encryption_->findData(preset);
    isEncryptionChosen_ = given >= 0;
    if (given >= 0) encryption_->setCurrentIndex(given);
    connect(encryption_, &QComboBox::activated, this, [this] { isEncryptionChosen_ = true; });
    addField(grid, *encryption_, u"Encryption"_s, text(TextId::ProgramServerEncryption));
}

void ServerDialog::suggestEncryption() {
    if (!isEncryptionChosen_) encryption_->setCurrentIndex(encryption_->findData(parts().usualEncryption()));
}

void ServerDialog::allowOk() {
    ok_->setEnabled(!database_->text().trimmed().isEmpty());
}

// A certificate and the like belong to their host.
ServerUrl ServerDialog::parts() const {
    const int port = port_->value();
    const QString host = host_->text().trimmed();
    return {.host = host,
            .port = port == usualPort ? QString() : QString::number(port),
            .database = database_->text().trimmed(),
            .user = user_->text().trimmed(),
            .encryption = encryption_->currentData().toString(),
            .others = host == preset_.host ? preset_.others : QString()};
}

QString ServerDialog::url() const {
    return parts().toString();
}

} // namespace mkl
