#include "Win32SerialPort.h"

#include "Wipe.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <numeric>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

constexpr DWORD driverBuffer = 4096;
/// Milliseconds that a driver gets for what it does at once or never.
constexpr DWORD promptly = 100;
/// How many empty reads in a row are accepted: when its device is gone, a driver may return them
/// without end.
constexpr int mostEmptyReads = 16;
constexpr char xon = 0x11;
constexpr char xoff = 0x13;

} // namespace

/// One overlapped call with its event and its bytes, which must exist until the call ends.
struct Win32SerialPort::Operation {
    Operation() { overlapped.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr); }
    ~Operation()
    {
        wipe(bytes);
        CloseHandle(overlapped.hEvent);
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    void restart()
    {
        const HANDLE event = overlapped.hEvent;
        overlapped = {};
        overlapped.hEvent = event;
        ResetEvent(event);
    }
    bool isFinishedWithin(DWORD milliseconds) const
    {
        return WaitForSingleObject(overlapped.hEvent, milliseconds) == WAIT_OBJECT_0;
    }
    bool isFinished() const { return isFinishedWithin(0); }
    /// Waits until the deadline for a cancelled call to end. If it does not, its memory is
    /// overwritten and never freed, because the driver may still use it.
    static void end(std::unique_ptr<Operation> operation, const QDeadlineTimer& deadline)
    {
        if (operation->isFinishedWithin(static_cast<DWORD>(deadline.remainingTime())))
            return;
        overwrite(operation->bytes.data(), operation->bytes.size());
        (void)operation.release();
    }

    OVERLAPPED overlapped{};
    QByteArray bytes;
};

namespace {

BYTE parityOf(char letter)
{
    switch (letter) {
    case 'E': return EVENPARITY;
    case 'O': return ODDPARITY;
    case 'M': return MARKPARITY;
    case 'S': return SPACEPARITY;
    default: return NOPARITY;
    }
}

BYTE stopBitsOf(LineSettings::Stop stop)
{
    switch (stop) {
    case LineSettings::Stop::One: break;
    case LineSettings::Stop::OneAndHalf: return ONE5STOPBITS;
    case LineSettings::Stop::Two: return TWOSTOPBITS;
    }
    return ONESTOPBIT;
}

QString openFailure(const QString& device, DWORD error)
{
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND)
        return u"No existe %1: compruebe que el adaptador está conectado."_s.arg(device);
    if (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION)
        return u"%1 está en uso por otro programa."_s.arg(device);
    return u"No se puede abrir %1 (error %2)."_s.arg(device).arg(error);
}

} // namespace

Win32SerialPort::Win32SerialPort(const PortNames& names, QObject* parent)
    : SerialPort(parent), m_names(names)
{}

Win32SerialPort::~Win32SerialPort()
{
    if (isOpen())
        closeDevice();
}

QString Win32SerialPort::deviceName() const { return m_names.device(portNumber()); }

QString Win32SerialPort::openDevice()
{
    const LineSettingsResult parsed = parseLineSettings(settings());
    if (!parsed.settings)
        return parsed.reason;
    const QString device = deviceName();
    if (device.isEmpty())
        return u"No hay ningún puerto serie para COM%1: compruebe que el adaptador está conectado."_s
            .arg(portNumber());
    const QString path = u"\\\\.\\"_s + device;
    const HANDLE handle =
        CreateFileW(reinterpret_cast<const wchar_t*>(path.utf16()), GENERIC_READ | GENERIC_WRITE, 0,
                    nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return openFailure(device, GetLastError());

    m_handle = handle;
    const QString refused = configure(*parsed.settings);
    if (!refused.isEmpty()) {
        CloseHandle(handle);
        m_handle = nullptr;
        return u"%1 %2."_s.arg(device, refused);
    }
    applyLines();
    PurgeComm(m_handle, PURGE_RXCLEAR | PURGE_TXCLEAR);
    m_read = std::make_unique<Operation>();
    m_notifier = std::make_unique<QWinEventNotifier>(m_read->overlapped.hEvent);
    connect(m_notifier.get(), &QWinEventNotifier::activated, this, &Win32SerialPort::readFinished);
    m_emptyReads = 0;
    if (startRead())
        return {};
    closeDevice();
    return u"%1 no es un puerto serie."_s.arg(device);
}

QString Win32SerialPort::configure(const LineSettings& settings)
{
    DCB dcb{};
    dcb.DCBlength = sizeof dcb;
    if (!GetCommState(m_handle, &dcb))
        return u"no es un puerto serie"_s;
    SetupComm(m_handle, driverBuffer, driverBuffer);
    dcb.BaudRate = static_cast<DWORD>(settings.speed);
    dcb.ByteSize = static_cast<BYTE>(settings.dataBits);
    dcb.Parity = parityOf(settings.parity);
    dcb.StopBits = stopBitsOf(settings.stop);
    dcb.fBinary = TRUE;
    dcb.fParity = dcb.Parity != NOPARITY;
    dcb.fOutxCtsFlow = dcb.fOutxDsrFlow = dcb.fDsrSensitivity = FALSE;
    dcb.fOutX = dcb.fInX = FALSE;
    dcb.fErrorChar = dcb.fNull = dcb.fAbortOnError = FALSE;
    // These characters are not used, but drivers refuse equal ones.
    dcb.XonChar = xon;
    dcb.XoffChar = xoff;
    dcb.fDtrControl = isDtrEnabled() ? DTR_CONTROL_ENABLE : DTR_CONTROL_DISABLE;
    dcb.fRtsControl = isRtsEnabled() ? RTS_CONTROL_ENABLE : RTS_CONTROL_DISABLE;
    // A driver may accept values that it does not support, and set others.
    DCB actual{};
    actual.DCBlength = sizeof actual;
    if (!SetCommState(m_handle, &dcb) || !GetCommState(m_handle, &actual) ||
        actual.ByteSize != dcb.ByteSize || actual.Parity != dcb.Parity ||
        actual.StopBits != dcb.StopBits)
        return u"no admite estos parámetros (%1)"_s.arg(this->settings());
    if (!isSpeedNear(actual.BaudRate, settings.speed))
        return u"no admite la velocidad de %1 bit/s"_s.arg(settings.speed);
    // No time-outs: a read of one byte ends when it arrives, and nothing waits for a write.
    COMMTIMEOUTS none{};
    SetCommTimeouts(m_handle, &none);
    return {};
}

void Win32SerialPort::closeDevice()
{
    const HANDLE handle = m_handle;
    m_handle = nullptr;
    m_notifier.reset();
    m_arrived.reset();
    // Every pending call must end before its bytes are freed.
    PurgeComm(handle, PURGE_TXABORT | PURGE_RXABORT);
    CancelIo(handle);
    // A read that did not begin does not end either.
    if (m_isReading)
        m_writes.push_back(std::move(m_read));
    m_isReading = false;
    m_read.reset();
    // One deadline for all of them: a driver that hangs ends none.
    const QDeadlineTimer deadline(promptly);
    for (auto& operation : m_writes)
        Operation::end(std::move(operation), deadline);
    m_writes.clear();
    CloseHandle(handle);
}

void Win32SerialPort::applyLines()
{
    // Failures are ignored: some devices have no such lines.
    EscapeCommFunction(m_handle, isDtrEnabled() ? SETDTR : CLRDTR);
    EscapeCommFunction(m_handle, isRtsEnabled() ? SETRTS : CLRRTS);
}

void Win32SerialPort::clearInput()
{
    SerialPort::clearInput();
    if (!isOpen())
        return;
    PurgeComm(m_handle, PURGE_RXCLEAR);
    // Also discard a byte that was read but not handed over yet.
    if (m_arrived)
        m_arrived->clear();
    DWORD count = 0;
    if (m_isReading && m_read->isFinished() &&
        GetOverlappedResult(m_handle, &m_read->overlapped, &count, FALSE) && !startRead())
        handOverLater();
}

void Win32SerialPort::clearOutput()
{
    if (isOpen())
        PurgeComm(m_handle, PURGE_TXABORT | PURGE_TXCLEAR);
}

void Win32SerialPort::write(const QByteArray& bytes)
{
    if (!isOpen() || bytes.isEmpty())
        return;
    reapWrites();
    const qsizetype waiting =
        std::accumulate(m_writes.begin(), m_writes.end(), qsizetype(0),
                        [](qsizetype sum, const auto& write) { return sum + write->bytes.size(); });
    if (waiting + bytes.size() > outputCapacity)
        return;
    auto operation = std::make_unique<Operation>();
    // A separate copy, which is overwritten after it was sent.
    operation->bytes = QByteArray(bytes.constData(), bytes.size());
    const BOOL done =
        WriteFile(m_handle, operation->bytes.constData(),
                  static_cast<DWORD>(operation->bytes.size()), nullptr, &operation->overlapped);
    // Errors are ignored: reading notices when the device is gone.
    if (!done && GetLastError() == ERROR_IO_PENDING)
        m_writes.push_back(std::move(operation));
}

void Win32SerialPort::reapWrites()
{
    std::erase_if(m_writes, [](const auto& write) { return write->isFinished(); });
}

bool Win32SerialPort::startRead()
{
    m_read->restart();
    m_read->bytes.resize(1);
    m_isReading = ReadFile(m_handle, m_read->bytes.data(), 1, nullptr, &m_read->overlapped) ||
                  GetLastError() == ERROR_IO_PENDING;
    return m_isReading;
}

// Only stores the result. Receivers may open a box or close the port, and the notifier does not
// watch its event until this function has returned.
void Win32SerialPort::readFinished()
{
    if (!isOpen() || !m_isReading || !m_read->isFinished())
        return;
    // A read whose byte is cleared meanwhile ends without one, and wine calls that a broken pipe.
    DWORD count = 0;
    if (GetOverlappedResult(m_handle, &m_read->overlapped, &count, FALSE) ||
        GetLastError() == ERROR_BROKEN_PIPE) {
        m_arrived = m_read->bytes.left(static_cast<qsizetype>(count));
        m_emptyReads = count == 0 ? m_emptyReads + 1 : 0;
    }
    m_isReading = false;
    handOverLater();
}

void Win32SerialPort::handOverLater()
{
    QMetaObject::invokeMethod(this, &Win32SerialPort::handOver, Qt::QueuedConnection);
}

// Called through the event queue, or a line that never pauses would delay timers without end.
// Begins the next read first, so that the port goes on receiving while a receiver has a box open.
void Win32SerialPort::handOver()
{
    if (!isOpen() || m_isReading)
        return;
    // Bytes have arrived, so earlier writes have probably been sent: free the finished ones.
    reapWrites();
    std::optional<QByteArray> bytes = std::exchange(m_arrived, std::nullopt);
    const bool isThere = bytes && fetchWaiting(*bytes);
    if (!isThere || m_emptyReads > mostEmptyReads || !startRead())
        deviceGone();
    else
        deliver(std::move(*bytes));
}

bool Win32SerialPort::fetchWaiting(QByteArray& bytes)
{
    DWORD errors = 0;
    COMSTAT status{};
    if (!ClearCommError(m_handle, &errors, &status))
        return false;
    if (status.cbInQue == 0)
        return true;
    auto operation = std::make_unique<Operation>();
    operation->bytes.resize(static_cast<qsizetype>(std::min(status.cbInQue, driverBuffer)));
    if (!ReadFile(m_handle, operation->bytes.data(), static_cast<DWORD>(operation->bytes.size()),
                  nullptr, &operation->overlapped) &&
        GetLastError() != ERROR_IO_PENDING)
        return false;
    // The bytes have arrived, so this ends at once. If the driver announced more than it has, the
    // call is cancelled.
    if (!operation->isFinishedWithin(promptly))
        CancelIoEx(m_handle, &operation->overlapped);
    DWORD count = 0;
    if (operation->isFinishedWithin(promptly)) {
        GetOverlappedResult(m_handle, &operation->overlapped, &count, FALSE);
        bytes.append(operation->bytes.constData(), static_cast<qsizetype>(count));
    }
    Operation::end(std::move(operation), QDeadlineTimer());
    return true;
}
