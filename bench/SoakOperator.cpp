#include "SoakOperator.h"

#include "RunningProgram.h"
#include "SoakDialogs.h"
#include "Switch.h"

#include <QAction>
#include <QCheckBox>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

/// In milliseconds. The longest operation, all blocks and the holidays with ten failures at 9600
/// bit/s, takes some 10 seconds.
constexpr int patience = 180'000;
constexpr int pollsAtATime = 20;

constexpr qsizetype outputByte = 2;
constexpr int outputs = 3;
constexpr qsizetype flagByte = 219;
constexpr quint8 manualFlag = 4;

constexpr auto setting = "frmSincronizacionReloxo";
constexpr auto remote = "frmTelemando";
constexpr auto programming = "frmProg";
constexpr auto firmware = "frmProgramPROM";

/// Windows that delete themselves later do so when an event loop runs again, and none does here.
void deleteClosedWindows() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

} // namespace

SoakOperator::SoakOperator(Running& running, const SoakDialogs& dialogs)
    : m_running(running), m_dialogs(dialogs)
{}

void SoakOperator::connectToClock()
{
    choose("mnuConectar");
    const auto& workflow = m_running.program.session().workflow();
    endOf(u"identification"_s, [&] { return workflow.Established(); });
}

void SoakOperator::disconnect()
{
    if (!isConnected())
        return;
    if (m_running.program.session().link().Ocupado())
        ++m_forgotten;
    choose("mnuDesconectar");
}

void SoakOperator::useEveryWindow()
{
    const std::function<void()> operations[] = {
        [this] { poll(false); },       [this] { poll(true); },
        [this] { setClock("cmdPC"); }, [this] { setClock("cmdEnviar"); },
        [this] { switchOutputs(); },   [this] { leaveToProgramme(); },
        [this] { writeProgramme(); },  [this] { sendFirmware(); },
    };
    for (const auto& operation : operations) {
        if (!isConnected() || !m_hung.isEmpty())
            return;
        operation();
        deleteClosedWindows();
    }
}

void SoakOperator::poll(bool withWindow)
{
    if (withWindow)
        choose("mnuInformacion");
    const int end = m_running.answers + pollsAtATime;
    endOf(u"general data"_s, [&] { return m_running.answers >= end; });
    if (withWindow)
        click("frmInfo", "cmdPechar");
}

void SoakOperator::setClock(const char* button)
{
    choose("mnuSincronizacionReloxo");
    click(setting, button);
    endOf(u"clock set"_s, [&] { return !window(setting); });
    click(setting, "cmdPechar");
}

void SoakOperator::switchOutputs()
{
    choose("mnuTelemando");
    if (auto* automatic = find<QCheckBox>(remote, u"chkAutomatico"_s); automatic->isChecked())
        automatic->click();
    if (!endOf(u"mode and outputs read"_s,
               [&] { return (statusByte(flagByte) & manualFlag) != 0; }))
        return;
    for (int index = 0; index < outputs && isConnected(); ++index) {
        const auto output = [&] { return statusByte(outputByte) >> index & 1; };
        const int wanted = 1 - output();
        // The first state that is read moves the switches, also one that has just been clicked.
        endOf(u"output switched"_s, [&] {
            auto* slider = find<Switch>(remote, u"sldInterruptor(%1)"_s.arg(index));
            if (slider && slider->value() != wanted)
                slider->toggle();
            return output() == wanted;
        });
    }
}

void SoakOperator::leaveToProgramme()
{
    if (auto* automatic = find<QCheckBox>(remote, u"chkAutomatico"_s); !automatic->isChecked())
        automatic->click();
    endOf(u"mode and outputs read"_s, [&] { return (statusByte(flagByte) & manualFlag) == 0; });
    click(remote, "cmdPechar");
}

void SoakOperator::writeProgramme()
{
    choose("mnuProgramacion");
    const auto isShown = [this] {
        const auto* fields = find<QWidget>(programming, u"fraEnvolvente"_s);
        return fields && fields->isVisible();
    };
    if (endOf(u"holidays read"_s, isShown)) {
        click(programming, "cmdEnviar");
        endOf(u"blocks and holidays written"_s, [this] { return !window(programming); });
    }
    // After a failure, and after the end of the connection.
    click(programming, "cmdCancelar");
}

void SoakOperator::sendFirmware()
{
    choose("mnuFirmware");
    const auto* send = find<QPushButton>(firmware, u"cmdEnviar"_s);
    if (!send->isEnabled())
        click(firmware, "cmdAbrir");
    const auto* notes = find<QPlainTextEdit>(firmware, u"txtNotas"_s);
    click(firmware, "cmdEnviar");
    const auto endsWith = [&](const QString& note) {
        return send->isEnabled() && notes->toPlainText().endsWith(note);
    };
    endOf(
        u"firmware sent"_s, [&] { return endsWith(u"Envío finalizado\n"_s); },
        [&] { return endsWith(u"Error actualizando firmware del equipo\n"_s); });
    // Interrupts what waits for the next connection.
    click(firmware, "cmdCancelar");
}

bool SoakOperator::isConnected() const
{
    return m_running.program.session().workflow().state() != ConnectionState::Disconnected;
}

bool SoakOperator::endOf(const QString& kind, const std::function<bool()>& isDone,
                         const std::function<bool()>& hasFailed)
{
    const int told = m_dialogs.told();
    const auto failed = [&] { return m_dialogs.told() > told || hasFailed(); };
    if (!waitFor([&] { return isDone() || failed() || !isConnected(); }, patience)) {
        m_hung = kind;
        return false;
    }
    Score& score = m_scores[kind];
    if (failed())
        ++score.failed;
    else
        ++(isConnected() ? score.done : score.cut);
    return isConnected() && !failed();
}

void SoakOperator::choose(const char* entry)
{
    auto* action = m_running.program.mainWindow().findChild<QAction*>(QString::fromLatin1(entry));
    if (action->isVisible() && action->isEnabled())
        action->trigger();
}

void SoakOperator::click(const char* form, const char* name)
{
    if (auto* button = find<QPushButton>(form, QString::fromLatin1(name)))
        button->click();
}

QWidget* SoakOperator::window(const char* form) const
{
    const auto widgets = m_running.program.mainWindow().findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        // The windows of the models inherit from these.
        if (widget->inherits(form) && widget->isVisible())
            return widget;
    }
    return nullptr;
}

template<typename Control>
Control* SoakOperator::find(const char* form, const QString& name) const
{
    const QWidget* shown = window(form);
    return shown ? shown->findChild<Control*>(name) : nullptr;
}

quint8 SoakOperator::statusByte(qsizetype index) const
{
    const QByteArray& data = m_running.program.session().globais().GeneralData;
    return index < data.size() ? static_cast<quint8>(data[index]) : quint8{0};
}
