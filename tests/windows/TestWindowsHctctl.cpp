#include "Processes.h"
#include "RegistryEditor.h"
#include "SimulatorProcess.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

const QString otherPort = u" Otro puerto u otra línea se indican con --port y --line; los puertos "
                          "se ven con: hctctl ports\r\n"_s;

/// A console, and a screen of it that nobody sees.
class Screen {
public:
    Screen()
    {
        FreeConsole();
        AllocConsole();
        SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        m_buffer = CreateConsoleScreenBuffer(GENERIC_READ | GENERIC_WRITE,
                                             FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                             CONSOLE_TEXTMODE_BUFFER, nullptr);
    }
    ~Screen()
    {
        CloseHandle(m_buffer);
        FreeConsole();
    }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// Runs the program with standard output on the screen.
    int run(QProcess& program, const QStringList& arguments)
    {
        program.setCreateProcessArgumentsModifier(
            [this](QProcess::CreateProcessArguments* creation) {
                creation->startupInfo->hStdOutput = m_buffer;
            });
        program.start(QStringLiteral(HCTCTL), arguments);
        return hasEnded(program) ? program.exitCode() : -1;
    }

    QString line(SHORT number) const
    {
        constexpr DWORD width = 70;
        QString text(width, u' ');
        DWORD read = 0;
        ReadConsoleOutputCharacterW(m_buffer, reinterpret_cast<wchar_t*>(text.data()), width,
                                    COORD{0, number}, &read);
        return text.trimmed();
    }

private:
    HANDLE m_buffer;
};

} // namespace

/// hctctl with what only Windows has: COM ports, consoles, lines that end with CR LF. COM7 is in
/// use, and there is no COM16.
class TestWindowsHctctl : public QObject {
    Q_OBJECT
private slots:
    void init() { m_hctctl.emplace(); }

    void pipeGetsUtf8();
    void pipeGetsMistakesAsUtf8();
    void consoleGetsLettersWhateverItsCodePage();
    void stateIsReadOverAComPort();
    void programmeIsReadIntoAFileWithASpanishPath();
    void portsAreListedWithTheirState();
    void portsAreATable();
    void portIsDescribedAsByTheDeviceManager();
    void portInUseIsTold();
    void missingPortIsTold();
    void silenceIsTold();
    void stateIsReadOverTheNetwork_data();
    void stateIsReadOverTheNetwork();
    void numberIsMadeAPortOfTheNetwork();

private:
    int run(const QStringList& arguments)
    {
        m_hctctl->start(QStringLiteral(HCTCTL), arguments);
        return hasEnded(*m_hctctl) ? m_hctctl->exitCode() : -1;
    }

    std::optional<QProcess> m_hctctl;
};

void TestWindowsHctctl::pipeGetsUtf8()
{
    QCOMPARE(run({u"--help"_s}), 0);
    QVERIFY(m_hctctl->readAllStandardOutput().startsWith(
        "Maneja los relojes programadores de se\xc3\xb1"
        "ales HCT-7200 y HCT-7300.\r\n"
        "Uso: hctctl [opciones] orden\r\n"));
    QCOMPARE(m_hctctl->readAllStandardError(), QByteArray());
}

void TestWindowsHctctl::pipeGetsMistakesAsUtf8()
{
    QCOMPARE(run({u"status"_s, u"--station"_s, u"ñ"_s}), 2);
    QCOMPARE(m_hctctl->readAllStandardOutput(), QByteArray());
    QCOMPARE(m_hctctl->readAllStandardError(),
             QByteArray("--station: \"\xc3\xb1\" no es un n\xc3\xbamero de 0 a 255.\r\n"
                        "La ayuda se ve con: hctctl --help\r\n"));
}

void TestWindowsHctctl::consoleGetsLettersWhateverItsCodePage()
{
    Screen screen;
    // The one of MS-DOS in the United States.
    SetConsoleOutputCP(437);
    QCOMPARE(screen.run(*m_hctctl, {u"--help"_s}), 0);
    QCOMPARE(screen.line(0), u"Maneja los relojes programadores de señales HCT-7200 y HCT-7300."_s);
    QCOMPARE(screen.line(3), u"Opciones:"_s);
    QCOMPARE(screen.line(5), u"--version                       Muestra la versión"_s);
}

void TestWindowsHctctl::stateIsReadOverAComPort()
{
    const SimulatorProcess clock(
        {u"--start"_s, u"2026-11-21T16:06:36"_s, u"--frozen"_s, u"--model"_s, u"7300"_s});
    QCOMPARE(run({u"status"_s, u"--json"_s, u"--port"_s, u"COM1"_s}), 0);
    const QJsonObject state = QJsonDocument::fromJson(m_hctctl->readAllStandardOutput()).object();
    QCOMPARE(state.value(u"model"_s).toString(), u"HCT-7300"_s);
    QCOMPARE(state.value(u"time"_s).toString(), u"2026-11-21T16:06:36"_s);
    QCOMPARE(m_hctctl->readAllStandardError(), QByteArray());
}

void TestWindowsHctctl::programmeIsReadIntoAFileWithASpanishPath()
{
    const SimulatorProcess clock({u"--programme"_s, u"school"_s});
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"programación del año.hct"_s);
    QCOMPARE(run({u"programme"_s, u"read"_s, path, u"--port"_s, u"COM1"_s}), 0);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().startsWith("--AVISOS 1--\r\n"));
}

void TestWindowsHctctl::portsAreListedWithTheirState()
{
    const SimulatorProcess clock;
    QCOMPARE(run({u"ports"_s, u"--json"_s}), 0);
    const QJsonArray ports = QJsonDocument::fromJson(m_hctctl->readAllStandardOutput())
                                 .object()
                                 .value(u"ports"_s)
                                 .toArray();
    QStringList states;
    for (const QJsonValue& port : ports)
        states += port[u"port"_s].toString() + u' ' + port[u"state"_s].toString();
    QVERIFY2(states.contains(u"COM1 free"_s), qPrintable(states.join(u',')));
    QVERIFY2(states.contains(u"COM7 inUse"_s), qPrintable(states.join(u',')));
    QVERIFY2(states.filter(u"COM16 "_s).isEmpty(), qPrintable(states.join(u',')));
}

void TestWindowsHctctl::portsAreATable()
{
    QCOMPARE(run({u"ports"_s}), 0);
    const QStringList lines = QString::fromUtf8(m_hctctl->readAllStandardOutput()).split(u"\r\n"_s);
    QCOMPARE(lines.first(),
             u"Puerto  Dispositivo  Estado  Descripción  Fabricante  Número de serie"_s);
    QVERIFY(lines.contains(u"COM7    COM7         en uso"_s));
}

void TestWindowsHctctl::portIsDescribedAsByTheDeviceManager()
{
    const QString adapters = u"HKLM\\SYSTEM\\CurrentControlSet\\Enum\\USB\\VID_FFFF&PID_0001"_s;
    const QString adapter = adapters + u"\\A50285BI"_s;
    const auto add = [](const QString& key, const char* name, const QString& text) {
        RegistryEditor::add(key, QString::fromLatin1(name), u"REG_SZ"_s, text);
    };
    add(adapter, "ClassGUID", u"{4d36e978-e325-11ce-bfc1-08002be10318}"_s);
    add(adapter, "DeviceDesc", u"USB Serial Port"_s);
    add(adapter, "Mfg", u"Adapters Ltd"_s);
    add(adapter + u"\\Device Parameters"_s, "PortName", u"COM7"_s);
    const int status = run({u"ports"_s, u"--json"_s});
    RegistryEditor::removeKey(adapters);
    QCOMPARE(status, 0);
    const QByteArray output = m_hctctl->readAllStandardOutput();
    QVERIFY2(output.contains(R"({"description":"USB Serial Port","device":"COM7",)"
                             R"("manufacturer":"Adapters Ltd","port":"COM7",)"
                             R"("serialNumber":"A50285BI","state":"inUse"})"),
             output.constData());
}

void TestWindowsHctctl::portInUseIsTold()
{
    QCOMPARE(run({u"status"_s, u"--port"_s, u"COM7"_s}), 3);
    QCOMPARE(m_hctctl->readAllStandardOutput(), QByteArray());
    QCOMPARE(QString::fromUtf8(m_hctctl->readAllStandardError()),
             u"COM7 está en uso por otro programa."_s + otherPort);
}

void TestWindowsHctctl::missingPortIsTold()
{
    QCOMPARE(run({u"status"_s, u"--port"_s, u"com16"_s}), 3);
    QCOMPARE(m_hctctl->readAllStandardOutput(), QByteArray());
    QCOMPARE(QString::fromUtf8(m_hctctl->readAllStandardError()),
             u"No existe COM16: compruebe que el adaptador está conectado."_s + otherPort);
}

void TestWindowsHctctl::silenceIsTold()
{
    const SimulatorProcess clock({u"--fault"_s, u"silent always"_s});
    QCOMPARE(run({u"status"_s, u"--wait"_s, u"1"_s, u"--quiet"_s, u"--port"_s, u"COM1"_s}), 4);
    QCOMPARE(QString::fromUtf8(m_hctctl->readAllStandardError()),
             u"Nadie contesta por COM1: compruebe el cable, que el reloj tiene corriente, la "
             "velocidad y la estación (1).\r\n"_s);
}

void TestWindowsHctctl::stateIsReadOverTheNetwork_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("RFC 2217") << u"rfc2217://127.0.0.1:24217"_s;
    QTest::newRow("raw") << u"tcp://127.0.0.1:24218"_s;
}

void TestWindowsHctctl::stateIsReadOverTheNetwork()
{
    QFETCH(QString, address);
    const SimulatorProcess clock(
        {u"--start"_s, u"2026-11-21T16:06:36"_s, u"--frozen"_s, u"--model"_s, u"7300"_s});
    QCOMPARE(run({u"status"_s, u"--json"_s, u"--port"_s, address}), 0);
    const QJsonObject state = QJsonDocument::fromJson(m_hctctl->readAllStandardOutput()).object();
    QCOMPARE(state.value(u"time"_s).toString(), u"2026-11-21T16:06:36"_s);
    QCOMPARE(m_hctctl->readAllStandardError(), QByteArray());
}

void TestWindowsHctctl::numberIsMadeAPortOfTheNetwork()
{
    const QString key = u"HKCU\\Software\\Quorvex\\Lurimat\\Puertos"_s;
    QCOMPARE(run({u"ports"_s, u"set"_s, u"COM16"_s, u"rfc2217://127.0.0.1:24217"_s}), 0);
    QCOMPARE(m_hctctl->readAllStandardOutput(),
             QByteArray("COM16 es ahora rfc2217://127.0.0.1:24217.\r\n"));
    QCOMPARE(RegistryEditor::query(key, u"COM16"_s), u"REG_SZ rfc2217://127.0.0.1:24217"_s);
    QCOMPARE(run({u"ports"_s}), 0);
    QVERIFY(m_hctctl->readAllStandardOutput().contains(
        "COM16   rfc2217://127.0.0.1:24217  en red\r\n"));
    QCOMPARE(run({u"ports"_s, u"unset"_s, u"COM16"_s}), 0);
    QCOMPARE(m_hctctl->readAllStandardOutput(), QByteArray("COM16 es ahora COM16.\r\n"));
    QCOMPARE(RegistryEditor::query(key, u"COM16"_s), QString());
    // A name is for a port of the network only: the others are those of Windows.
    RegistryEditor::add(key, u"COM16"_s, u"REG_SZ"_s, u"COM1"_s);
    QCOMPARE(run({u"ports"_s}), 0);
    QVERIFY(!m_hctctl->readAllStandardOutput().contains("COM16"));
    RegistryEditor::removeKey(key);
}

QTEST_GUILESS_MAIN(TestWindowsHctctl)
#include "TestWindowsHctctl.moc"
