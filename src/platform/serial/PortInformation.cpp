#include "PortInformation.h"

#include "DeviceUsers.h"
#include "PortLock.h"

#include <QFileInfo>
#include <QSerialPortInfo>

PortInformation PortInformation::of(const QString& device)
{
    PortInformation information;
    // The lock depends on the real path.
    const QFileInfo file(QFileInfo(device).canonicalFilePath());
    if (!file.exists())
        return information;
    const QSerialPortInfo known(file.fileName());
    if (known.systemLocation() == file.filePath()) {
        information.description = known.description();
        information.manufacturer = known.manufacturer();
        information.serialNumber = known.serialNumber();
    }
    if (isLocked(file.filePath()) || isOpenSomewhere(file.filePath()))
        information.state = State::InUse;
    else
        information.state = file.isReadable() && file.isWritable() ? State::Free : State::Forbidden;
    return information;
}
