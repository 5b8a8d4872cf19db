#include "frmPINPUK.h"

#include "CodeEdit.h"
#include "WidgetDescription.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int pinLength = 4;
constexpr int pukLength = 8;

} // namespace

frmPINPUK::frmPINPUK(QWidget* parent)
    : QDialog(parent),
      lblPIN(new QLabel(u"P&IN:"_s, this)),
      txtPIN(new CodeEdit(pinLength, this)),
      lblPUK(new QLabel(u"P&UK:"_s, this)),
      txtPUK(new CodeEdit(pukLength, this)),
      chkPUK(new QCheckBox(u"Cambiar &PIN"_s, this)),
      chkVerCodigos(new QCheckBox(u"&Ver códigos"_s, this)),
      cmdAceptar(new QPushButton(u"&Aceptar"_s, this)),
      cmdCancelar(new QPushButton(u"&Cancelar"_s, this))
{
    setObjectName(u"frmPINPUK"_s);
    setWindowTitle(u"Introducción de datos"_s);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(makeCodes());
    layout->addWidget(makeButtons());
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(txtPIN, &QLineEdit::textChanged, this, &frmPINPUK::validate);
    connect(txtPUK, &QLineEdit::textChanged, this, &frmPINPUK::validate);
    connect(chkPUK, &QCheckBox::toggled, this, &frmPINPUK::choosePuk);
    connect(chkVerCodigos, &QCheckBox::toggled, this, &frmPINPUK::showCodes);
    choosePuk(false);
    // Only this first caption has an access key. A click on chkPUK sets one without, for good.
    lblPIN->setText(u"P&IN:"_s);
    showCodes(false);
}

QGroupBox* frmPINPUK::makeCodes()
{
    describe(*txtPIN, u"txtPIN"_s, u"PIN"_s);
    describe(*txtPUK, u"txtPUK"_s, u"PUK"_s);
    describe(*chkPUK, u"chkPUK"_s, u"Cambiar PIN"_s);
    describe(*chkVerCodigos, u"chkVerCodigos"_s, u"Ver códigos"_s);
    lblPIN->setObjectName(u"lblPIN"_s);
    lblPIN->setBuddy(txtPIN);
    lblPUK->setObjectName(u"lblPUK"_s);
    lblPUK->setBuddy(txtPUK);

    auto* codes = new QGroupBox(u"Códigos Identificación de Usuario"_s, this);
    auto* grid = new QGridLayout(codes);
    grid->addWidget(lblPIN, 0, 0);
    grid->addWidget(txtPIN, 0, 1);
    grid->addWidget(lblPUK, 1, 0);
    grid->addWidget(txtPUK, 1, 1);
    grid->addWidget(chkPUK, 2, 1);
    grid->addWidget(chkVerCodigos, 3, 1);
    grid->setColumnStretch(1, 1);
    // Room for the longer of the captions that the label takes in turn.
    grid->setColumnMinimumWidth(0, fontMetrics().horizontalAdvance(u"Nuevo PIN:"_s));
    return codes;
}

QDialogButtonBox* frmPINPUK::makeButtons()
{
    describe(*cmdAceptar, u"cmdAceptar"_s, u"Aceptar"_s);
    describe(*cmdCancelar, u"cmdCancelar"_s, u"Cancelar"_s);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdAceptar, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdCancelar, QDialogButtonBox::RejectRole);
    cmdAceptar->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmPINPUK::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmPINPUK::reject);
    return buttons;
}

QByteArray frmPINPUK::pin() const { return txtPIN->text().toLatin1(); }

QByteArray frmPINPUK::puk() const { return txtPUK->text().toLatin1(); }

void frmPINPUK::accept()
{
    m_cancelled = false;
    QDialog::accept();
}

bool frmPINPUK::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate)
        validate();
    return QDialog::event(event);
}

void frmPINPUK::choosePuk(bool wanted)
{
    lblPUK->setEnabled(wanted);
    txtPUK->setEnabled(wanted);
    QPalette colours = palette();
    if (!wanted)
        colours.setColor(QPalette::Base, colours.color(QPalette::Window));
    txtPUK->setPalette(colours);
    lblPIN->setText(wanted ? u"Nuevo PIN:"_s : u"PIN:"_s);
    txtPIN->setAccessibleName(wanted ? u"Nuevo PIN"_s : u"PIN"_s);
    txtPUK->forget();
    validate();
}

void frmPINPUK::showCodes(bool clear)
{
    for (CodeEdit* edit : {txtPIN, txtPUK})
        edit->setShown(clear);
}

void frmPINPUK::validate()
{
    const bool pukComplete = !chkPUK->isChecked() || txtPUK->text().size() == txtPUK->maxLength();
    cmdAceptar->setEnabled(txtPIN->text().size() == txtPIN->maxLength() && pukComplete);
}
