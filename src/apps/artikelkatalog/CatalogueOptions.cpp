#include "apps/artikelkatalog/CatalogueOptions.h"

#include "apps/artikelkatalog/Failure.h"
#include "apps/artikelkatalog/SenderChoice.h"
#include "catalogue/CatalogueReplica.h"
#include "catalogue/CatalogueReplication.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace mkl {

namespace {

constexpr int noteCharacters = 62; // in a line
constexpr int fieldCharacters = 10;
constexpr Long firstSender = 1; // of a catalogue that has none

void addField(QGridLayout& grid, QWidget& field, const QString& name, const QString& caption) {
    auto* label = new QLabel(caption, grid.parentWidget());
    label->setBuddy(&field);
    field.setObjectName(name);
    field.setMinimumWidth(fieldCharacters * field.fontMetrics().averageCharWidth());
    const int row = grid.rowCount();
    grid.addWidget(label, row, 0);
    grid.addWidget(&field, row, 1, Qt::AlignLeft);
}

} // namespace

CatalogueOptions::CatalogueOptions(const Ref<dao::Database>& catalogue, SenderChoice& senders, QWidget* parent)
    : QDialog(parent)
    , catalogue_(catalogue)
    , senders_(senders) {
    setObjectName(u"CatalogueOptions"_s);
    setWindowTitle(text(TextId::ProgramOptionsTitle));
    auto* grid = new QGridLayout(this);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    addSender(*grid);
    addDigit(*grid);
    auto* buttons = new QDialogButtonBox(this);
    auto* ok = buttons->addButton(text(TextId::FormOk), QDialogButtonBox::AcceptRole);
    ok->setObjectName(u"OK"_s);
    buttons->addButton(text(TextId::FormCancel), QDialogButtonBox::RejectRole)->setObjectName(u"Cancel"_s);
    connect(buttons, &QDialogButtonBox::accepted, this, &CatalogueOptions::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CatalogueOptions::reject);
    if (!catalogue_->Updatable()) {
        addNote(*grid, text(TextId::ProgramOptionsReadOnly))->setObjectName(u"ReadOnly"_s);
        for (QWidget* field : std::initializer_list<QWidget*>{sender_, digit_, ok})
            field->setEnabled(false);
    }
    const int row = grid->rowCount();
    grid->setRowMinimumHeight(row, fontMetrics().height());
    grid->addWidget(buttons, row + 1, 0, 1, 2);
}

void CatalogueOptions::addSender(QGridLayout& grid) {
    sender_ = new QComboBox(this);
    for (const Long key : SenderChoice::sendersOf(*catalogue_))
        sender_->addItem(QString::number(key), key);
    if (sender_->count() == 0)
        sender_->addItem(text(TextId::ProgramSenderNew, {QString::number(firstSender)}), firstSender);
    const int chosen = sender_->findData(senders_.senderOf(*catalogue_));
    sender_->setCurrentIndex(std::max(0, chosen));
    addField(grid, *sender_, u"Sender"_s, text(TextId::ProgramSender));
    addNote(grid, text(TextId::ProgramSenderExplained));
}

void CatalogueOptions::addDigit(QGridLayout& grid) {
    digit_ = new QSpinBox(this);
    digit_->setRange(0, 9);
    addField(grid, *digit_, u"ReplicaDigit"_s, text(TextId::ProgramDigit));
    addNote(grid, text(TextId::ProgramDigitExplained));
    // What stands in a file of another program is told; a digit can be set all the same.
    succeeds([this] { digit_->setValue(replicaDigit(*catalogue_)); },
             [&] { addNote(grid, currentError().Description())->setObjectName(u"ForeignDigit"_s); });
}

QLabel* CatalogueOptions::addNote(QGridLayout& grid, const QString& note) {
    auto* label = new QLabel(note, this);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setFixedWidth(noteCharacters * fontMetrics().averageCharWidth());
    grid.addWidget(label, grid.rowCount(), 1);
    return label;
}

void CatalogueOptions::accept() {
    if (succeeds([this] { store(); }, [] { showFailure(text(TextId::ProgramOptionsNotStored)); })) QDialog::accept();
}

void CatalogueOptions::store() {
    if (!hasReplicaDigit(*catalogue_) || replicaDigit(*catalogue_) != digit_->value())
        giveReplicaDigit(*catalogue_, digit_->value());
    senders_.choose(*catalogue_, sender_->currentData().toInt());
}

} // namespace mkl
