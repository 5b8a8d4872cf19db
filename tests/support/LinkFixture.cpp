#include "LinkFixture.h"

#include <QCoreApplication>

namespace {

constexpr int mostTicksOfATimeOut = 100000;

quint8 byteAt(const QByteArray& bytes, qsizetype index)
{
    return static_cast<quint8>(bytes.at(index));
}

} // namespace

LinkFixture::LinkFixture()
{
    QObject::connect(&link, &MessageLink::occupationChanged, &crono, &frmCrono::ocupadoChanged);
    link.ApplySettings();
}

void LinkFixture::connect()
{
    link.ArrancaConexion(false);
    crono.setTimerEnabled(true);
}

void LinkFixture::disconnect()
{
    crono.setTimerEnabled(false);
    link.RemataConexion();
}

void LinkFixture::tick(int times)
{
    while (times-- > 0 && tmrCrono.fire()) {
    }
}

int LinkFixture::wakeUps(int ticks)
{
    int count = 0;
    const QObject counting;
    const TickTimer& timer = tmrCrono;
    QObject::connect(&timer, &TickTimer::wake, &counting, [&] { ++count; });
    tick(ticks);
    return count;
}

bool LinkFixture::hasRequest()
{
    collectRequests();
    return !m_requests.isEmpty();
}

LinkFixture::Request LinkFixture::takeRequest()
{
    collectRequests();
    m_last = m_requests.isEmpty() ? Request() : m_requests.takeFirst();
    return m_last;
}

QByteArray LinkFixture::Request::text() const
{
    return code == 0 ? QByteArray("none") : QByteArray::number(code) + ' ' + body.toHex();
}

QByteArray LinkFixture::nextRequestBody()
{
    tick();
    return takeRequestBody();
}

quint8 LinkFixture::requestCode() { return static_cast<quint8>(rawRequestCode() & ~0x10); }

quint8 LinkFixture::rawRequestCode()
{
    collectRequests();
    return m_requests.isEmpty() ? m_last.rawCode : m_requests.first().rawCode;
}

void LinkFixture::answer(const QByteArray& body, quint8 code)
{
    line().arrive(frame(settings.estacion(), code, body));
}

void LinkFixture::answerHex(const char* hexadecimal, quint8 code)
{
    answer(QByteArray::fromHex(hexadecimal), code);
}

void LinkFixture::refuse(quint8 selector, quint8 status)
{
    QByteArray body;
    body.append(static_cast<char>(selector)).append(static_cast<char>(status));
    answer(body);
}

void LinkFixture::answerDamaged(const QByteArray& body, quint8 code)
{
    line().arrive(frame(settings.estacion(), code, body, 1));
}

void LinkFixture::timeOut()
{
    const int enabled = tmrTemporizador.timesEnabled;
    for (int tick = 0; tick < mostTicksOfATimeOut; ++tick)
        if (!tmrTemporizador.fire() || tmrTemporizador.timesEnabled != enabled)
            return;
}

QByteArray LinkFixture::frame(quint8 station, quint8 code, const QByteArray& body,
                              int checksumError)
{
    const qsizetype length = body.size() + 2;
    const char start = length > 255 ? 0x48 : 0x68;
    const char shortened = static_cast<char>(length % 256);
    QByteArray bytes;
    bytes.append(start).append(shortened).append(shortened).append(start);
    bytes.append(static_cast<char>(station)).append(static_cast<char>(code)).append(body);
    int sum = checksumError + station + code;
    for (const char byte : body)
        sum += static_cast<quint8>(byte);
    return bytes.append(static_cast<char>(sum % 256)).append(0x16);
}

QByteArray LinkFixture::fullBlock(quint8 model)
{
    QByteArray block = QByteArray::fromHex("0000050b0003050906150b1a");
    block.append(static_cast<char>(model));
    block.append(QByteArray(220 - block.size(), 0));
    block[218] = static_cast<char>(0xFF);
    return block;
}

QByteArray LinkFixture::remoteControlledBlock()
{
    QByteArray block = fullBlock();
    block[219] = 0x04;
    return block;
}

void LinkFixture::deleteWhatIsDue()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void LinkFixture::collectRequests()
{
    QByteArray bytes = serie.takeWritten() + modem.takeWritten();
    while (bytes.size() >= 8) {
        const qsizetype length = byteAt(bytes, 1) + (byteAt(bytes, 0) == 0x48 ? 256 : 0);
        if (bytes.size() < length + 6)
            return;
        Request request;
        request.station = byteAt(bytes, 4);
        request.rawCode = byteAt(bytes, 5);
        request.code = static_cast<quint8>(request.rawCode & ~0x10);
        request.body = bytes.mid(6, length - 2);
        m_requests.append(request);
        bytes.remove(0, length + 6);
    }
}
