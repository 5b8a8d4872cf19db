#include "ModemQuestions.h"

#include "Dialogs.h"
#include "ModemControl.h"

#include <QDir>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

QString failureText(LinkState phase)
{
    switch (phase) {
    case LinkState::Initialisation:
        return u"El módem no responde. Revise las conexiones \r\ny la configuración"_s;
    case LinkState::PinSent: return u"El módem no acepta el código PIN/PUK"_s;
    // This text has a full stop and the next has none.
    case LinkState::PinQuery: return u"El módem no responde al comando."_s;
    case LinkState::SignalQuery: return u"El módem no responde al comando"_s;
    case LinkState::Dialling:
        return u"La llamada ha fallado. Compruebe que los parámetros de\r\n"
               "configuración son correctos, que el módem está inicializado\r\n"
               "correctamente, e inténtelo de nuevo"_s;
    case LinkState::Idle:
    case LinkState::ScriptCommand:
    case LinkState::HeaderHunt:
    case LinkState::Body: break;
    }
    return {};
}

} // namespace

ModemQuestions::ModemQuestions(ModemControl& modem, Dialogs& dialogs,
                               const QString& applicationDirectory)
    : m_modem(modem), m_dialogs(dialogs), m_applicationDirectory(applicationDirectory)
{
    connect(&modem, &ModemControl::numberWanted, this, &ModemQuestions::askNumber);
    connect(&modem, &ModemControl::scriptWanted, this, &ModemQuestions::askScript);
    connect(&modem, &ModemControl::lineFoundBusy, this, &ModemQuestions::tellBusy);
    connect(&modem, &ModemControl::failed, this, &ModemQuestions::tellFailure);
}

// Events run while a box is up: this object and the modem's control may be gone when it is
// answered.

void ModemQuestions::askNumber()
{
    const QPointer<ModemControl> modem(&m_modem);
    const auto number =
        m_dialogs.askText(u"Introducción de datos"_s, u"Escriba el número de teléfono"_s);
    if (modem)
        modem->dial(number.value_or(QString()));
}

void ModemQuestions::askScript()
{
    FileRequest request;
    request.title = u"Seleccione un archivo de inicialización de módem"_s;
    request.filters = {u"Scripts de inicialización de módem (*.mdm)"_s,
                       u"Todos los archivos (*.*)"_s};
    request.defaultExtension = u"mdm"_s;
    request.directory = m_applicationDirectory + u"Modems"_s + QDir::separator();
    const QPointer<ModemControl> modem(&m_modem);
    const QString path = m_dialogs.openFile(request);
    if (modem)
        modem->runScript(path);
}

void ModemQuestions::tellBusy()
{
    const QPointer<ModemControl> modem(&m_modem);
    m_dialogs.tell(Dialogs::Icon::Warning, u"Aviso"_s,
                   u"El módem con el que se intenta contactar está comunicando.\r\n"
                   "Asegúrese de que el número es correcto"_s);
    if (modem)
        modem->acknowledgeBusy();
}

void ModemQuestions::tellFailure(LinkState phase)
{
    const QPointer<ModemControl> modem(&m_modem);
    m_dialogs.tell(Dialogs::Icon::Critical, u"Error"_s, failureText(phase));
    if (modem)
        modem->acknowledgeFailure();
}
