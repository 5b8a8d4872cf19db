#include "SystemEnvironment.h"

#include "NetworkAddress.h"
#include "NetworkSerialPort.h"
#include "NumberedPort.h"
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

std::unique_ptr<SerialPort> makeNumberedPort(const PortNames& names)
{
    return std::make_unique<NumberedPort>(
        names, [&names](const QString& device) -> std::unique_ptr<SerialPort> {
            if (NetworkAddress::isMeantBy(device))
                return std::make_unique<NetworkSerialPort>(device);
            return std::make_unique<MachinePort>(names);
        });
}

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

SystemEnvironment::SystemEnvironment()
    : m_registry(systemRegistry()),
      m_portNames(*m_registry),
      m_commSerie(makeNumberedPort(m_portNames)),
      m_commModem(makeNumberedPort(m_portNames)),
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
