#include "ProgramFixture.h"
#include "frmAcerca.h"
#include "frmPrincipal.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestAboutBox : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void entryAndCaptionNameTheApplication();
    void boxIsModal();
    void titleAndVersionAreShown();
    void iconIsThatOfTheWindow();
    void imageIsShown();
    void fiveContactLinesAreShown();
    void buttonsHaveTheirCaptions();
    void cerrarUnloadsTheBox();
    void enterUnloadsTheBox();
    void escapeUnloadsTheBox();
    void informationButtonStartsTheSystemsProgram();
    void informationButtonTellsWhenThereIsNone();
    void everyControlHasAnAccessibleName();

private:
    QPushButton* button(const char* name)
    {
        return m_box->findChild<QPushButton*>(QString::fromLatin1(name));
    }
    QLabel* label(const QString& name) { return m_box->findChild<QLabel*>(name); }

    std::unique_ptr<ProgramFixture> m_fixture;
    QPointer<frmAcerca> m_box;
};

void TestAboutBox::init()
{
    m_fixture = std::make_unique<ProgramFixture>();
    m_fixture->choose("mnuAcerca");
    m_box = m_fixture->program.mainWindow().findChild<frmAcerca*>();
    QVERIFY(m_box);
}

void TestAboutBox::entryAndCaptionNameTheApplication()
{
    QCOMPARE(m_fixture->action("mnuAcerca")->text(), u"Acerca de Control Equipo HCT"_s);
    QCOMPARE(m_box->windowTitle(), u"Acerca de Control Equipo HCT"_s);
}

void TestAboutBox::boxIsModal() { QCOMPARE(ProgramFixture::modalWindow(), u"frmAcerca"_s); }

void TestAboutBox::titleAndVersionAreShown()
{
    QCOMPARE(label(u"lblTitle"_s)->text(), u"Control Equipo HCT"_s);
    QCOMPARE(label(u"lblVersion"_s)->text(), u"Versión 2.0.1"_s);
}

void TestAboutBox::iconIsThatOfTheWindow()
{
    const QImage shown = label(u"picIcon"_s)->pixmap().toImage();
    QVERIFY(!shown.isNull());
    QCOMPARE(shown, m_box->windowIcon().pixmap(64).toImage());
    // Blue ring at the left, nothing in the upper right corner.
    QVERIFY(qBlue(shown.pixel(4, 26)) > qRed(shown.pixel(4, 26)));
    QCOMPARE(qAlpha(shown.pixel(63, 0)), 0);
}

void TestAboutBox::imageIsShown()
{
    QCOMPARE(label(u"imgEquipo"_s)->pixmap().size(), QSize(120, 88));
}

void TestAboutBox::fiveContactLinesAreShown()
{
    for (int line = 0; line < 5; ++line)
        QVERIFY(!label(u"lblContacto(%1)"_s.arg(line))->text().isEmpty());
    QVERIFY(!label(u"lblContacto(5)"_s));
}

void TestAboutBox::buttonsHaveTheirCaptions()
{
    QCOMPARE(button("cmdOK")->text(), u"Cerrar"_s);
    QCOMPARE(button("cmdSysInfo")->text(), u"&Información..."_s);
}

void TestAboutBox::cerrarUnloadsTheBox()
{
    QTest::mouseClick(button("cmdOK"), Qt::LeftButton);
    QTRY_VERIFY(!m_box);
}

void TestAboutBox::enterUnloadsTheBox()
{
    QVERIFY(QTest::qWaitForWindowActive(m_box));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTRY_VERIFY(!m_box);
    QVERIFY(m_fixture->dialogs.boxes.isEmpty());
}

void TestAboutBox::escapeUnloadsTheBox()
{
    QTest::keyClick(m_box, Qt::Key_Escape);
    QTRY_VERIFY(!m_box);
}

void TestAboutBox::informationButtonStartsTheSystemsProgram()
{
    const QTemporaryDir folder;
    QFile program(folder.filePath(u"MSINFO32.EXE"_s));
    QVERIFY(program.open(QIODevice::WriteOnly));
    m_fixture->registry.values.insert(
        MemoryRegistry::path(Registry::RootKey::LocalMachine,
                             u"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"_s, u"PATH"_s),
        {RegistryValue::Text, program.fileName().toLatin1() + '\0'});
    QVERIFY(QTest::qWaitForWindowActive(m_box));
    QTest::keyClick(m_box, Qt::Key_I, Qt::AltModifier);
    QTRY_COMPARE(m_fixture->started, QStringList{program.fileName()});
    QVERIFY(m_fixture->dialogs.boxes.isEmpty());
}

void TestAboutBox::informationButtonTellsWhenThereIsNone()
{
    QTest::mouseClick(button("cmdSysInfo"), Qt::LeftButton);
    QCOMPARE(m_fixture->dialogs.boxes.size(), 1);
    QCOMPARE(m_fixture->dialogs.boxes.first().title, u"Control Equipo HCT"_s);
    QCOMPARE(m_fixture->dialogs.boxes.first().text,
             u"La información del sistema no está disponible en este momento"_s);
    QVERIFY(m_box);
}

void TestAboutBox::everyControlHasAnAccessibleName()
{
    for (const QLabel* shown : m_box->findChildren<QLabel*>())
        QVERIFY2(!shown->text().isEmpty() || !shown->accessibleName().isEmpty(),
                 qPrintable(shown->objectName()));
    for (const QPushButton* shown : m_box->findChildren<QPushButton*>())
        QVERIFY2(!shown->accessibleName().isEmpty(), qPrintable(shown->objectName()));
}

QTEST_MAIN(TestAboutBox)
#include "TestAboutBox.moc"
