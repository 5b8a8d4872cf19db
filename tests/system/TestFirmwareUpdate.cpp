#include "../firmware/HexText.h"
#include "ConnectedProgram.h"
#include "IntervalTimer.h"
#include "MessageLink.h"
#include "SerialPort.h"
#include "frmPrincipal.h"

#include <QCheckBox>
#include <QEventLoop>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

/// Firmware goes into a simulated clock over a pseudo-terminal, as an operator would send it.
class TestFirmwareUpdate : public QObject {
    Q_OBJECT
private slots:
    void imageOf2000LinesArrivesByteForByteDespiteLosses();
    void imageArrivesByteForByteWhateverSpoilsTheAnswers();
    void lineLostInAnAnswerEndsTheTransfer_data();
    void lineLostInAnAnswerEndsTheTransfer();
    void strayByteAfterEveryLineDisturbsNothing();
    void linesOfAllLengthsArriveByteForByte();
    void refusedLineSixTimesEndsTheTransfer();
    void resetAfterTheLastLineSilencesTheClock();
    void disconnectionKeepsTheTransferUntilTheNextConnection();
    void closingTheApplicationWhileSendingAsksFirst();
    void programThatMustEndDoesNotAsk();
    void programThatMustEndUnderTheQuestionEnds_data();
    void programThatMustEndUnderTheQuestionEnds();
    void operatorInterruptsTheTransfer();

private:
    QTemporaryDir m_folder;
};

namespace {

constexpr auto form = "frmProgramPROM";
/// For a busy machine. On an idle one the longest transfer takes 20 seconds.
constexpr int transferPatience = 600000;

/// An image as text and as the bytes from its lowest to its highest address.
struct Image {
    QByteArray text;
    QByteArray bytes;
};

/// Lines of 16 bytes in three banks of 64 KB. The last bank begins with a segment record.
Image imageOfLines(int lines)
{
    Image image;
    for (int index = 0; index < lines; ++index) {
        if (index == lines / 3)
            image.text += ":020000040001F9\r\n";
        if (index == lines * 2 / 3)
            image.text += ":020000020100FB\r\n";
        const int bank = index < lines / 3 ? 0 : index < lines * 2 / 3 ? 1 : 2;
        const int offset = (index * 16) & 0xFFFF;
        QByteArray data;
        for (int byte = 0; byte < 16; ++byte)
            data.append(static_cast<char>(index * 7 + byte * 31 + index / 256));
        image.text += record(0, static_cast<quint16>(offset), data) + "\r\n";
        const qsizetype address = bank * 0x10000 + offset;
        image.bytes.append(
            QByteArray(std::max<qsizetype>(0, address - image.bytes.size()), '\xFF'));
        image.bytes.append(data);
    }
    image.text += ":00000001FF\r\n";
    return image;
}

/// The program connected, with the firmware window open.
struct FirmwareDesk {
    explicit FirmwareDesk(const QTemporaryDir& files, const QStringList& options = {})
        : folder(files), run(options)
    {
        run.choose("mnuConectar");
    }
    bool open()
    {
        if (!QTest::qWaitFor([this] { return run.isEstablished(); }, patience))
            return false;
        run.choose("mnuFirmware");
        return run.shownForm(form) != nullptr;
    }
    void read(const QByteArray& text)
    {
        QFile file(folder.filePath(u"reloj.hex"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write the test's file");
        file.close();
        run.dialogs.paths = {file.fileName()};
        click("cmdAbrir");
    }
    template<typename Control>
    Control* find(const char* name)
    {
        QWidget* window = run.shownForm(form);
        return window ? window->findChild<Control*>(QString::fromLatin1(name)) : nullptr;
    }
    void click(const char* name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }
    QString notes() { return find<QPlainTextEdit>("txtNotas")->toPlainText(); }
    bool finished() { return notes().endsWith(u"Envío finalizado\n"_s); }
    /// Waits in an event loop. The waiting functions of Qt Test sleep 10 ms between events, twice
    /// the time of a firmware line.
    bool finishes()
    {
        QEventLoop loop;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &loop, [this, &loop] {
            if (ended())
                loop.quit();
        });
        look.start(20);
        QTimer::singleShot(transferPatience, &loop, &QEventLoop::quit);
        loop.exec();
        return finished();
    }
    /// Also when it has failed.
    bool ended() { return finished() || notes().endsWith(u"del equipo\n"_s); }
    /// How many lines the window says it has sent.
    int linesSent() { return run.text(form, "lblLinhas").trimmed().toInt(); }
    QByteArray received()
    {
        const QString path = folder.filePath(u"recibido.bin"_s);
        run.clock.command(u"firmware binary "_s + run.clock.pathOf(path));
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    const QTemporaryDir& folder;
    ConnectedProgram run;
};

} // namespace

void TestFirmwareUpdate::imageOf2000LinesArrivesByteForByteDespiteLosses()
{
    FirmwareDesk s(m_folder, {u"--firmware-lose"_s, u"7"_s, u"--firmware-refuse"_s, u"100"_s,
                              u"--fault"_s, u"silent after 300 on firmware"_s, u"--fault"_s,
                              u"checksum times 5 after 700 on firmware"_s, u"--fault"_s,
                              u"station after 900 on firmware"_s, u"--fault"_s,
                              u"echo after 1200 on firmware"_s, u"--fault"_s,
                              u"truncate 5 after 1500 on firmware"_s, u"--fault"_s,
                              u"lost after 2000 on firmware"_s});
    QVERIFY(s.open());
    const Image image = imageOfLines(2000);
    s.read(image.text);
    QCOMPARE(s.run.text(form, "lblTamanho"), u"2000"_s);
    s.click("cmdEnviar");
    QVERIFY(s.finishes());

    QCOMPARE(s.linesSent(), 2000);
    QCOMPARE(s.find<QProgressBar>("pgbEnvio")->value(), 1999);
    QCOMPARE(s.run.clock.state(u"firmware.complete"_s), u"yes"_s);
    QVERIFY(s.received() == image.bytes);
    // The connection was not disturbed.
    QVERIFY(s.run.isEstablished());
}

void TestFirmwareUpdate::imageArrivesByteForByteWhateverSpoilsTheAnswers()
{
    QStringList faults;
    for (const char* fault :
         {"length times 2 after 10", "length -2 times 4 after 20", "doubled times 20 after 30",
          "joined times 20 after 60", "joined dd02 times 20 after 90",
          "changed 4 times 2 after 120", "changed 5 times 4 after 130",
          "changed 6 times 4 after 140", "changed 7 xor 2 times 4 after 150",
          "stray -2000 times 20 after 160"})
        faults += {u"--fault"_s, QString::fromLatin1(fault) + u" on firmware"_s};
    FirmwareDesk s(m_folder, faults);
    QVERIFY(s.open());
    const Image image = imageOfLines(200);
    s.read(image.text);
    s.click("cmdEnviar");
    QVERIFY(s.finishes());
    QCOMPARE(s.linesSent(), 200);
    QVERIFY(s.received() == image.bytes);
    QCOMPARE(s.run.clock.command(u"faults"_s), QStringList());
    QVERIFY(s.run.isEstablished());
}

void TestFirmwareUpdate::lineLostInAnAnswerEndsTheTransfer_data()
{
    QTest::addColumn<int>("bytes");
    for (const int bytes : {0, 5, 9, 10})
        QTest::addRow("%d bytes", bytes) << bytes;
}

void TestFirmwareUpdate::lineLostInAnAnswerEndsTheTransfer()
{
    QFETCH(int, bytes);
    FirmwareDesk s(m_folder, {u"--fault"_s, u"unplug %1 after 20 on firmware"_s.arg(bytes)});
    QVERIFY(s.open());
    const Image image = imageOfLines(60);
    s.read(image.text);
    s.click("cmdEnviar");
    QVERIFY(!s.finishes());
    QVERIFY(s.notes().endsWith(u"Error actualizando firmware del equipo\n"_s));
    QCOMPARE(s.linesSent(), bytes == 10 ? 21 : 20);
    QTRY_VERIFY_WITH_TIMEOUT(!s.run.isEstablished(), patience);

    // From the first line, as soon as there is a connection again.
    s.run.clock.command(u"return"_s);
    qputenv("HCT_COM1", s.run.clock.state(u"device"_s).toLocal8Bit());
    s.run.choose("mnuConectar");
    QTRY_VERIFY_WITH_TIMEOUT(s.run.isEstablished(), patience);
    s.click("cmdEnviar");
    QTRY_VERIFY_WITH_TIMEOUT(s.finished(), patience);
    QVERIFY(s.received() == image.bytes);
}

void TestFirmwareUpdate::strayByteAfterEveryLineDisturbsNothing()
{
    FirmwareDesk s(m_folder, {u"--fault"_s, u"stray 0 times 200 on firmware"_s, u"--fault"_s,
                              u"stray 1000 times 200 after 200 on firmware"_s, u"--fault"_s,
                              u"stray 2000 times 200 after 400 on firmware"_s});
    QVERIFY(s.open());
    const Image image = imageOfLines(600);
    s.read(image.text);
    s.click("cmdEnviar");
    QVERIFY(s.finishes());
    QVERIFY(s.received() == image.bytes);
    // Each of the bytes has been sent.
    QCOMPARE(s.run.clock.command(u"faults"_s), QStringList());
    QVERIFY(s.run.isEstablished());
}

void TestFirmwareUpdate::linesOfAllLengthsArriveByteForByte()
{
    FirmwareDesk s(m_folder);
    QVERIFY(s.open());
    Image image;
    for (int length = 1; length <= 255; ++length) {
        const QByteArray data(length, static_cast<char>(length));
        image.text += record(0, static_cast<quint16>(image.bytes.size()), data) + "\n";
        image.bytes += data;
    }
    s.read(image.text + ":00000001FF");
    s.click("cmdEnviar");
    QVERIFY(s.finishes());
    QVERIFY(s.received() == image.bytes);
}

void TestFirmwareUpdate::refusedLineSixTimesEndsTheTransfer()
{
    FirmwareDesk s(m_folder, {u"--fault"_s, u"refuse 2 times 6 after 20 on firmware"_s});
    QVERIFY(s.open());
    const Image image = imageOfLines(60);
    s.read(image.text);
    s.click("cmdEnviar");
    QTRY_VERIFY_WITH_TIMEOUT(s.notes().endsWith(u"Error actualizando firmware del equipo\n"_s),
                             patience);
    QCOMPARE(s.linesSent(), 20);
    QCOMPARE(s.run.clock.state(u"firmware.lines"_s), u"20"_s);
    QVERIFY(s.find<QPushButton>("cmdAbrir")->isEnabled());

    s.click("cmdEnviar");
    QTRY_VERIFY_WITH_TIMEOUT(s.finished(), patience);
    QVERIFY(s.received() == image.bytes);
}

void TestFirmwareUpdate::resetAfterTheLastLineSilencesTheClock()
{
    FirmwareDesk s(m_folder, {u"--programme"_s, u"school"_s});
    QVERIFY(s.open());
    s.read(imageOfLines(30).text);
    QTest::keyClick(s.find<QCheckBox>("chkReset"), Qt::Key_Space);
    s.click("cmdEnviar");
    QTRY_VERIFY_WITH_TIMEOUT(s.finished(), patience);
    // The last acknowledgement came before the silence, in which the programme is erased.
    QCOMPARE(s.linesSent(), 30);
    QCOMPARE(s.run.clock.state(u"block1.alarms"_s), QString(132, u'0'));
    // The clock is gone and the connection ends. The window stays as it is.
    QTRY_VERIFY_WITH_TIMEOUT(!s.run.isEstablished(), transferPatience);
    QVERIFY(s.finished());
}

void TestFirmwareUpdate::disconnectionKeepsTheTransferUntilTheNextConnection()
{
    FirmwareDesk s(m_folder);
    QVERIFY(s.open());
    const Image image = imageOfLines(200);
    s.read(image.text);
    s.click("cmdEnviar");
    QTRY_VERIFY_WITH_TIMEOUT(s.linesSent() >= 50, patience);
    s.run.choose("mnuDesconectar");
    // Nothing is sent without ticks, nor through a closed port.
    QVERIFY(!s.run.system.environment().tmrCrono.isEnabled());
    QVERIFY(!s.run.program.session().link().directPort().isOpen());
    QVERIFY(!s.find<QPushButton>("cmdAbrir")->isEnabled());

    s.run.choose("mnuConectar");
    QVERIFY(s.finishes());
    QVERIFY(s.run.isEstablished());
    QVERIFY(s.received() == image.bytes);
}

void TestFirmwareUpdate::closingTheApplicationWhileSendingAsksFirst()
{
    FirmwareDesk s(m_folder);
    QVERIFY(s.open());
    const Image image = imageOfLines(200);
    s.read(image.text);
    s.click("cmdEnviar");
    QTRY_VERIFY_WITH_TIMEOUT(s.linesSent() >= 20, patience);
    s.run.dialogs.confirmations = {false};
    s.run.dialogs.whileUp = [&s] { QVERIFY(s.run.program.session().globais().LinkEstablished); };
    s.run.program.mainWindow().close();
    QCOMPARE(s.run.dialogs.boxes.size(), 1);
    QCOMPARE(s.run.dialogs.boxes[0].text, u"¿El firmware se está actualizando en este momento.\r\n"
                                          "¿Seguro que desea interrumpir el proceso?"_s);
    QVERIFY(s.run.program.mainWindow().isVisible());
    QVERIFY(s.run.isEstablished());
    QVERIFY(s.finishes());
    QVERIFY(s.received() == image.bytes);

    s.click("cmdEnviar");
    QTRY_VERIFY_WITH_TIMEOUT(s.linesSent() >= 20, patience);
    s.run.dialogs.confirmations = {true};
    s.run.program.mainWindow().close();
    QCOMPARE(s.run.dialogs.boxes.size(), 2);
    QVERIFY(!s.run.program.mainWindow().isVisible());
    QVERIFY(s.run.program.session().globais().ShuttingDown);
}

void TestFirmwareUpdate::programThatMustEndDoesNotAsk()
{
    FirmwareDesk s(m_folder);
    QVERIFY(s.open());
    s.read(imageOfLines(200).text);
    s.click("cmdEnviar");
    QTRY_VERIFY_WITH_TIMEOUT(s.linesSent() >= 20, patience);
    // As at SIGTERM or the end of the desktop session.
    s.run.program.mainWindow().unload();
    QVERIFY(s.run.dialogs.boxes.isEmpty());
    QVERIFY(!s.run.program.mainWindow().isVisible());
    QVERIFY(!s.run.program.session().link().Ocupado());
}

void TestFirmwareUpdate::programThatMustEndUnderTheQuestionEnds_data()
{
    QTest::addColumn<bool>("ofTheProgram");
    QTest::addColumn<bool>("answer");
    QTest::newRow("closing the window, yes") << false << true;
    QTest::newRow("closing the window, no") << false << false;
    QTest::newRow("closing the program, yes") << true << true;
    QTest::newRow("closing the program, no") << true << false;
}

void TestFirmwareUpdate::programThatMustEndUnderTheQuestionEnds()
{
    QFETCH(bool, ofTheProgram);
    QFETCH(bool, answer);
    FirmwareDesk s(m_folder);
    QVERIFY(s.open());
    s.read(imageOfLines(200).text);
    s.click("cmdEnviar");
    QTRY_VERIFY_WITH_TIMEOUT(s.linesSent() >= 5, patience);
    // The windows are deleted while the box is open, as its event loop would do.
    s.run.dialogs.whileUp = [&s] {
        s.run.program.mainWindow().unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    s.run.dialogs.confirmations = {answer};
    if (ofTheProgram)
        s.run.program.mainWindow().close();
    else
        QMetaObject::invokeMethod(s.find<QPushButton>("cmdCancelar"), &QPushButton::click,
                                  Qt::QueuedConnection);
    QTRY_COMPARE_WITH_TIMEOUT(s.run.dialogs.boxes.size(), 1, patience);
    QVERIFY(!s.run.program.mainWindow().isVisible());
    QVERIFY(s.run.program.session().globais().ShuttingDown);
    QVERIFY(!s.run.program.session().link().Ocupado());
}

void TestFirmwareUpdate::operatorInterruptsTheTransfer()
{
    FirmwareDesk s(m_folder);
    QVERIFY(s.open());
    s.read(imageOfLines(200).text);
    s.click("cmdEnviar");
    QTRY_VERIFY_WITH_TIMEOUT(s.linesSent() >= 20, patience);
    s.run.dialogs.confirmations = {true};
    s.click("cmdCancelar");
    QVERIFY(!s.run.shownForm(form));
    QTRY_VERIFY_WITH_TIMEOUT(!s.run.program.session().link().Ocupado(), patience);
    const QString lines = s.run.clock.state(u"firmware.lines"_s);
    // Several requests later.
    const int answered = s.run.clock.state(u"answered"_s).toInt();
    QTRY_VERIFY_WITH_TIMEOUT(s.run.clock.state(u"answered"_s).toInt() > answered + 3, patience);
    QCOMPARE(s.run.clock.state(u"firmware.lines"_s), lines);
    QVERIFY(s.run.isEstablished());

    // A new window, without the file.
    s.run.choose("mnuFirmware");
    QVERIFY(!s.find<QPushButton>("cmdEnviar")->isEnabled());
}

QTEST_MAIN(TestFirmwareUpdate)
#include "TestFirmwareUpdate.moc"
