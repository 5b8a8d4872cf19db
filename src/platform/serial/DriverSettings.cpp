#include "DriverSettings.h"

#include <asm/termbits.h>
#include <sys/ioctl.h>

using namespace Qt::StringLiterals;

namespace {

tcflag_t parityFlags(char parity)
{
    switch (parity) {
    case 'E': return PARENB;
    case 'O': return PARENB | PARODD;
    case 'M': return PARENB | PARODD | CMSPAR;
    case 'S': return PARENB | CMSPAR;
    default: return 0;
    }
}

tcflag_t sizeFlags(int dataBits)
{
    switch (dataBits) {
    case 5: return CS5;
    case 6: return CS6;
    case 7: return CS7;
    default: return CS8;
    }
}

} // namespace

QString refusedByDriver(int descriptor, const LineSettings& wanted)
{
    termios2 actual{};
    if (::ioctl(descriptor, TCGETS2, &actual) != 0)
        return u"no es un puerto serie"_s;
    if (!isSpeedNear(actual.c_ospeed, wanted.speed))
        return u"no admite la velocidad de %1 bit/s"_s.arg(wanted.speed);
    const tcflag_t parity = actual.c_cflag & (PARENB | PARODD | CMSPAR);
    if (parity != parityFlags(wanted.parity))
        return u"no admite la paridad elegida"_s;
    if ((actual.c_cflag & CSIZE) != sizeFlags(wanted.dataBits))
        return u"no admite %1 bits de datos"_s.arg(wanted.dataBits);
    // Drivers of this system have only 1 and 2 stop bits.
    if (wanted.stop == LineSettings::Stop::OneAndHalf)
        return u"no admite 1.5 bits de parada"_s;
    const tcflag_t stop = wanted.stop == LineSettings::Stop::Two ? CSTOPB : 0;
    if ((actual.c_cflag & CSTOPB) != stop)
        return u"no admite los bits de parada elegidos"_s;
    return {};
}
