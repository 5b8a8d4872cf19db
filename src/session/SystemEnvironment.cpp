#include "SystemEnvironment.h"

#include "PreciseTimer.h"
#include "SystemRegistry.h"
#include "SystemTickTimer.h"

#include <QDir>

#ifdef Q_OS_WIN
#include "Win32SerialPort.h"
#else
#include "QtSerialPort.h"
#endif

namespace {

#ifdef Q_OS_WIN
using MachinePort = Win32SerialPort;
#else
using MachinePort = QtSerialPort;
#endif

// The current directory, not that of the executable: modem scripts are looked for where the program
// was started.
QString currentDirectory()
{
    QString path = QDir::toNativeSeparators(QDir::currentPath());
    if (!path.endsWith(QDir::separator()))
        path += QDir::separator();
    return path;
}

} // namespace

SystemEnvironment::SystemEnvironment(const PortNames::Variables& variables)
    : m_registry(systemRegistry()),
      m_portNames(variables ? PortNames(*m_registry, variables) : PortNames(*m_registry)),
      m_commSerie(std::make_unique<MachinePort>(m_portNames)),
      m_commModem(std::make_unique<MachinePort>(m_portNames)),
      m_tmrCrono(makeTickTimer()),
      m_tmrTemporizador(std::make_unique<PreciseTimer>())
{}

SystemEnvironment::~SystemEnvironment() = default;

Environment SystemEnvironment::environment()
{
    return {
        .registry = *m_registry,
        .portNames = m_portNames,
        .commSerie = *m_commSerie,
        .commModem = *m_commModem,
        .tmrCrono = *m_tmrCrono,
        .tmrTemporizador = *m_tmrTemporizador,
        .pause = m_pause,
        .clock = m_clock,
        .applicationDirectory = currentDirectory(),
    };
}
