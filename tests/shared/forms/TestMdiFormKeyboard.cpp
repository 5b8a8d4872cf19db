#include "SampleForm.h"

#include <QGroupBox>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The area in a main window whose menu "&Ayuda" shares its letter with the form's button.
struct WithMenu {
    WithMenu()
    {
        QMenu* menu = window.menuBar()->addMenu(u"&Ayuda"_s);
        menu->addAction(u"&Manual"_s);
        opened = std::make_unique<QSignalSpy>(menu, &QMenu::aboutToShow);
        area = new QMdiArea;
        window.setCentralWidget(area);
        window.resize(800, 600);
        window.show();
        form = new SampleForm(*area);
        form->showForm();
        clicked = std::make_unique<QSignalSpy>(form->button, &QPushButton::clicked);
    }
    /// Presses Alt+A in the widget with the focus.
    static void press()
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::AltModifier);
        if (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
    }

    QMainWindow window;
    QMdiArea* area;
    SampleForm* form;
    std::unique_ptr<QSignalSpy> opened;
    std::unique_ptr<QSignalSpy> clicked;
};

} // namespace

/// What the keys do in a form.
class TestMdiFormKeyboard : public QObject {
    Q_OBJECT
private slots:
    void init() { m_area = showArea(); }

    void controlF4ClosesForTheOperator();
    void enterPressesTheButtonWithTheFocus_data();
    void enterPressesTheButtonWithTheFocus();
    void accessKeySharedWithTheMenuBelongsToTheWindowInUse();
    void accessKeyOfADisabledButtonOpensTheMenu();
    void accessKeyOfACaptionLeadsToItsField();
    void accessKeyOfAFrameLeadsToItsFirstControlAndPressesNothing();

private:
    std::unique_ptr<QMdiArea> m_area;
};

void TestMdiFormKeyboard::controlF4ClosesForTheOperator()
{
    SampleForm form(*m_area);
    form.showForm();
    form.refuses = true;
    // As on a desktop with other keys for closing such windows.
    for (QAction* action : m_area->subWindowList().constFirst()->systemMenu()->actions())
        action->setShortcuts(QList<QKeySequence>());
    QTest::keyClick(form.edit, Qt::Key_F4, Qt::ControlModifier);
    QCOMPARE(form.asked, QList<MdiForm::CloseReason>{MdiForm::CloseReason::Operator});
}

void TestMdiFormKeyboard::enterPressesTheButtonWithTheFocus_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Space") << Qt::Key_Space;
}

void TestMdiFormKeyboard::enterPressesTheButtonWithTheFocus()
{
    QFETCH(Qt::Key, key);
    SampleForm form(*m_area);
    form.showForm();
    QSignalSpy clicked(form.button, &QPushButton::clicked);
    QTest::keyClick(form.edit, key);
    QCOMPARE(clicked.size(), 0);
    form.button->setFocus();
    QTest::keyClick(form.button, key);
    QCOMPARE(clicked.size(), 1);
    // A key that is held down does not press again.
    QKeyEvent repeated(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(form.button, &repeated);
    QCOMPARE(clicked.size(), 1);
    form.button->setEnabled(false);
    QTest::keyClick(&form, key);
    QCOMPARE(clicked.size(), 1);
}

void TestMdiFormKeyboard::accessKeySharedWithTheMenuBelongsToTheWindowInUse()
{
    WithMenu program;
    QVERIFY(QTest::qWaitForWindowActive(&program.window));
    program.form->edit->setFocus();
    for (int round = 1; round <= 3; ++round) {
        WithMenu::press();
        QTRY_COMPARE(program.clicked->size(), round);
        QCOMPARE(program.opened->size(), 0);
    }
    QVERIFY(program.form->button->hasFocus());
    QCOMPARE(program.form->edit->text(), QString());
    program.form->hideForm();
    program.window.setFocus();
    WithMenu::press();
    QCOMPARE(program.opened->size(), 1);
    QCOMPARE(program.clicked->size(), 3);
}

void TestMdiFormKeyboard::accessKeyOfADisabledButtonOpensTheMenu()
{
    WithMenu program;
    QVERIFY(QTest::qWaitForWindowActive(&program.window));
    program.form->edit->setFocus();
    program.form->button->setEnabled(false);
    WithMenu::press();
    QCOMPARE(program.opened->size(), 1);
    QCOMPARE(program.clicked->size(), 0);
}

void TestMdiFormKeyboard::accessKeyOfACaptionLeadsToItsField()
{
    SampleForm form(*m_area);
    form.showForm();
    form.button->setFocus();
    QTest::keyClick(form.button, Qt::Key_H, Qt::AltModifier);
    QVERIFY(form.edit->hasFocus());
}

void TestMdiFormKeyboard::accessKeyOfAFrameLeadsToItsFirstControlAndPressesNothing()
{
    SampleForm form(*m_area);
    auto* frame = new QGroupBox(u"&Salida"_s);
    auto* column = new QVBoxLayout(frame);
    auto* locked = new QPushButton(u"0"_s);
    auto* first = new QPushButton(u"1"_s);
    locked->setEnabled(false);
    column->addWidget(locked);
    column->addWidget(first);
    form.layout()->addWidget(frame);
    form.showForm();
    form.edit->setFocus();
    QSignalSpy pressed(first, &QPushButton::pressed);
    QTest::keyClick(form.edit, Qt::Key_S, Qt::AltModifier);
    QVERIFY(first->hasFocus());
    QCOMPARE(pressed.size(), 0);
    first->setEnabled(false);
    form.edit->setFocus();
    QTest::keyClick(form.edit, Qt::Key_S, Qt::AltModifier);
    QVERIFY(form.edit->hasFocus());
}

QTEST_MAIN(TestMdiFormKeyboard)
#include "TestMdiFormKeyboard.moc"
