#include "ModemPage.h"

#include "MiniTerminal.h"
#include "ModemControl.h"
#include "Wipe.h"
#include "frmPINPUK.h"

#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcutEvent>

using namespace Qt::StringLiterals;

namespace {

/// These buttons have no tool tip; what they do is told to a screen reader alone.
void name(QPushButton& button, const QString& objectName, const QString& description)
{
    button.setObjectName(objectName);
    button.setAccessibleName(button.text().remove(u'&'));
    button.setAccessibleDescription(description);
}

} // namespace

ModemPage::ModemPage(ModemControl& modem, MiniTerminal& terminal, QWidget* parent)
    : QWidget(parent),
      m_modem(modem),
      cmdComprobarPIN(new QPushButton(u"Com&probar PIN"_s)),
      cmdEnviarPIN(new QPushButton(u"&Enviar PIN..."_s)),
      cmdNivelSinal(new QPushButton(u"&Nivel señal"_s)),
      cmdExecutarScript(new QPushButton(u"Archiv&o..."_s)),
      cmdBorrarTerminal(new QPushButton(u"&Borrar terminal"_s))
{
    name(*cmdComprobarPIN, u"cmdComprobarPIN"_s,
         u"Pregunta al módem si la tarjeta SIM necesita un código"_s);
    name(*cmdEnviarPIN, u"cmdEnviarPIN"_s,
         u"Envía al módem el código PIN, o el código PUK y un nuevo PIN"_s);
    name(*cmdNivelSinal, u"cmdNivelSinal"_s,
         u"Pregunta al módem el nivel de la señal que recibe"_s);
    name(*cmdExecutarScript, u"cmdExecutarScript"_s,
         u"Envía al módem los comandos de un archivo"_s);
    name(*cmdBorrarTerminal, u"cmdBorrarTerminal"_s, QString());

    auto* buttons = new QVBoxLayout;
    for (QPushButton* button : {cmdComprobarPIN, cmdEnviarPIN, cmdNivelSinal, cmdExecutarScript})
        buttons->addWidget(button);
    buttons->addStretch(1);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(makeTerminalFrame(terminal), 1);

    connect(cmdComprobarPIN, &QPushButton::clicked, &m_modem, &ModemControl::checkPin);
    connect(cmdEnviarPIN, &QPushButton::clicked, this, &ModemPage::askForPin);
    connect(cmdNivelSinal, &QPushButton::clicked, &m_modem, &ModemControl::querySignal);
    connect(cmdExecutarScript, &QPushButton::clicked, &m_modem, &ModemControl::executeScript);
    connect(cmdBorrarTerminal, &QPushButton::clicked, &terminal, &MiniTerminal::clear);
    connect(&terminal, &MiniTerminal::typed, &m_modem, &ModemControl::type);
}

QGroupBox* ModemPage::makeTerminalFrame(MiniTerminal& terminal)
{
    terminal.setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* frame = new QGroupBox(u"Mini Terminal"_s);
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(&terminal, 1);
    layout->addWidget(cmdBorrarTerminal, 0, Qt::AlignRight);
    return frame;
}

void ModemPage::EnableModemControls(bool enabled)
{
    QWidget* const focused = window()->focusWidget();
    for (QPushButton* button : {cmdComprobarPIN, cmdEnviarPIN, cmdNivelSinal, cmdExecutarScript}) {
        if (!enabled && button == focused)
            m_pressed = button;
        button->setEnabled(enabled);
    }
    if (!enabled && m_pressed == focused)
        m_focusMeanwhile = window()->focusWidget();
    if (!enabled || !m_pressed)
        return;
    // Disabling moved the focus; restore it, or the next key goes to the modem.
    if (window()->focusWidget() == m_focusMeanwhile)
        m_pressed->setFocus();
    m_pressed = nullptr;
}

void ModemPage::shareAccessKey(QWidget& tabBar)
{
    tabBar.installEventFilter(this);
    cmdExecutarScript->installEventFilter(this);
}

bool ModemPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Shortcut && isVisible() && cmdExecutarScript->isEnabled()) {
        const auto* shortcut = static_cast<QShortcutEvent*>(event);
        if (shortcut->key() == QKeySequence::mnemonic(cmdExecutarScript->text())) {
            cmdExecutarScript->click();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void ModemPage::askForPin()
{
    if (!m_modem.ensureModemPort())
        return;
    auto* dialog = new frmPINPUK(this);
    connect(dialog, &QDialog::finished, this, [this, dialog] {
        if (!dialog->Cancelado()) {
            QByteArray pin = dialog->pin();
            QByteArray puk = dialog->puk();
            m_modem.sendPin(pin, puk);
            wipe(pin);
            wipe(puk);
        }
        dialog->deleteLater();
    });
    dialog->open();
}
