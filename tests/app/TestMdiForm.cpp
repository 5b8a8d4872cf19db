#include "MdiForm.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

class Form final : public MdiForm {
public:
    explicit Form(QMdiArea& area) : MdiForm(area)
    {
        setWindowTitle(u"Ventana"_s);
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(new QLineEdit);
        edit = new QLineEdit;
        auto* caption = new QLabel(u"&Hora:"_s);
        caption->setBuddy(edit);
        button = new QPushButton(u"&Automático"_s);
        layout->addWidget(caption);
        layout->addWidget(edit);
        layout->addWidget(button);
    }

    QLineEdit* edit;
    QPushButton* button;
    bool refuses = false;
    QList<CloseReason> asked;
    int unloads = 0;
    std::function<void()> whileAsking;

protected:
    bool queryUnload(CloseReason reason) override
    {
        asked.append(reason);
        if (whileAsking)
            whileAsking();
        return !refuses;
    }
    void unload() override { ++unloads; }
};

} // namespace

class TestMdiForm : public QObject {
    Q_OBJECT
private slots:
    void init();

    void isHiddenUntilShown();
    void showingGivesTheFocus();
    void showingGivesTheFocusToTheFirstControlThatTakesIt();
    void showingBringsToTheFront();
    void hidingLeavesNoEmptyFrame();
    void showingAgainKeepsWhatWasEntered();
    void minimisedIsRestored();
    void titleBarClosesForTheOperator();
    void controlF4ClosesForTheOperator();
    void closingGivesTheFocusToTheWindowUsedBefore();
    void closingAWindowBehindLeavesTheFocusAlone();
    void refusalKeepsTheWindow();
    void closingLeavesNoEmptyFrame();
    void closingPassesTheReason();
    void secondCloseWhileAskingDoesNothing();
    void askingAloneUnloadsNothing();
    void deletingTheFormTakesTheFrame();
    void deletingTheAreaTakesTheForm();
    void frameFitsItsContents();
    void framesDoNotHideEachOther();
    void newWindowStandsBesideTheOpenOnesWhileThereIsRoom();
    void windowsCascadeWhenThereIsNoRoom();
    void enterPressesTheButtonWithTheFocus_data();
    void enterPressesTheButtonWithTheFocus();
    void accessKeySharedWithTheMenuBelongsToTheWindowInUse();
    void accessKeyOfADisabledButtonOpensTheMenu();
    void accessKeyOfACaptionLeadsToItsField();
    void accessKeyOfAFrameLeadsToItsFirstControlAndPressesNothing();

private:
    qsizetype visibleFrames() const
    {
        qsizetype count = 0;
        for (const QMdiSubWindow* frame : m_area->subWindowList())
            count += frame->isVisible() ? 1 : 0;
        return count;
    }

    std::unique_ptr<QMdiArea> m_area;
};

void TestMdiForm::init()
{
    m_area = std::make_unique<QMdiArea>();
    m_area->resize(800, 600);
    m_area->show();
    QVERIFY(QTest::qWaitForWindowActive(m_area.get()));
}

void TestMdiForm::isHiddenUntilShown()
{
    Form form(*m_area);
    QVERIFY(!form.isFormVisible());
    QCOMPARE(visibleFrames(), 0);
    form.showForm();
    QVERIFY(form.isFormVisible());
    QVERIFY(form.isVisible());
}

void TestMdiForm::showingGivesTheFocus()
{
    Form first(*m_area);
    Form second(*m_area);
    first.showForm();
    second.showForm();
    first.showForm();
    QVERIFY(first.isAncestorOf(QApplication::focusWidget()) ||
            QApplication::focusWidget() == &first);
}

void TestMdiForm::showingGivesTheFocusToTheFirstControlThatTakesIt()
{
    Form form(*m_area);
    for (QLineEdit* edit : form.findChildren<QLineEdit*>())
        edit->setEnabled(false);
    form.showForm();
    QVERIFY(form.button->hasFocus());
    form.edit->setEnabled(true);
    form.edit->setFocus();
    form.hideForm();
    form.showForm();
    QVERIFY(form.edit->hasFocus());
}

void TestMdiForm::showingBringsToTheFront()
{
    Form first(*m_area);
    Form second(*m_area);
    first.showForm();
    second.showForm();
    QCOMPARE(m_area->activeSubWindow()->widget(), &second);
    first.showForm();
    QCOMPARE(m_area->activeSubWindow()->widget(), &first);
    QCOMPARE(m_area->subWindowList(QMdiArea::StackingOrder).constLast()->widget(), &first);
}

void TestMdiForm::hidingLeavesNoEmptyFrame()
{
    Form form(*m_area);
    form.showForm();
    form.hideForm();
    QVERIFY(!form.isFormVisible());
    QCOMPARE(visibleFrames(), 0);
}

void TestMdiForm::showingAgainKeepsWhatWasEntered()
{
    Form form(*m_area);
    form.showForm();
    QTest::keyClicks(form.edit, u"doce"_s);
    form.hideForm();
    form.showForm();
    QVERIFY(form.isVisible());
    QCOMPARE(form.edit->text(), u"doce"_s);
}

void TestMdiForm::minimisedIsRestored()
{
    Form form(*m_area);
    form.showForm();
    QMdiSubWindow* frame = m_area->subWindowList().constFirst();
    frame->showMinimized();
    QVERIFY(frame->isMinimized());
    form.showForm();
    QVERIFY(!frame->isMinimized());
    QVERIFY(form.isVisible());
}

void TestMdiForm::titleBarClosesForTheOperator()
{
    QPointer<Form> form = new Form(*m_area);
    form->showForm();
    form->refuses = true;
    m_area->subWindowList().constFirst()->close();
    QCOMPARE(form->asked, QList<MdiForm::CloseReason>{MdiForm::CloseReason::Operator});
    form->refuses = false;
    m_area->subWindowList().constFirst()->close();
    QTRY_VERIFY(!form);
}

void TestMdiForm::controlF4ClosesForTheOperator()
{
    QPointer<Form> form = new Form(*m_area);
    form->showForm();
    form->refuses = true;
    QTest::keyClick(form->edit, Qt::Key_F4, Qt::ControlModifier);
    QCOMPARE(form->asked, QList<MdiForm::CloseReason>{MdiForm::CloseReason::Operator});
}

void TestMdiForm::closingGivesTheFocusToTheWindowUsedBefore()
{
    QList<Form*> forms;
    for (int i = 0; i < 4; ++i) {
        forms.append(new Form(*m_area));
        forms[i]->showForm();
        forms[i]->edit->setFocus();
    }
    // Used in the order 3, 2, 0, 1; the last but one is out of the way.
    for (const int i : {2, 0, 1})
        forms[i]->showForm();
    m_area->subWindowList().at(0)->showMinimized();
    forms[1]->showForm();
    forms[1]->closeWindow(MdiForm::CloseReason::Operator);
    QCOMPARE(m_area->activeSubWindow()->widget(), forms[2]);
    QVERIFY(forms[2]->edit->hasFocus());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_area->activeSubWindow()->widget(), forms[2]);
    forms[2]->hideForm();
    QCOMPARE(m_area->activeSubWindow()->widget(), forms[3]);
    QVERIFY(forms[3]->edit->hasFocus());
}

void TestMdiForm::closingAWindowBehindLeavesTheFocusAlone()
{
    auto* behind = new Form(*m_area);
    auto* inUse = new Form(*m_area);
    behind->showForm();
    inUse->showForm();
    inUse->edit->setFocus();
    behind->closeWindow(MdiForm::CloseReason::Code);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_area->activeSubWindow()->widget(), inUse);
    QVERIFY(inUse->edit->hasFocus());
}

void TestMdiForm::refusalKeepsTheWindow()
{
    Form form(*m_area);
    form.showForm();
    form.refuses = true;
    QVERIFY(!form.closeWindow(MdiForm::CloseReason::Code));
    QVERIFY(form.isFormVisible());
    QCOMPARE(form.unloads, 0);
}

void TestMdiForm::closingLeavesNoEmptyFrame()
{
    QPointer<Form> form = new Form(*m_area);
    form->showForm();
    QSignalSpy unloaded(form, &MdiForm::unloaded);
    QVERIFY(form->closeWindow(MdiForm::CloseReason::Code));
    QCOMPARE(unloaded.size(), 1);
    QCOMPARE(form->unloads, 1);
    QCOMPARE(visibleFrames(), 0);
    QVERIFY(form->closeWindow(MdiForm::CloseReason::Code));
    QCOMPARE(unloaded.size(), 1);
    QTRY_VERIFY(!form);
    QCOMPARE(m_area->subWindowList().size(), 0);
}

void TestMdiForm::closingPassesTheReason()
{
    Form form(*m_area);
    form.refuses = true;
    form.closeWindow(MdiForm::CloseReason::Shutdown);
    form.closeWindow(MdiForm::CloseReason::Code);
    QCOMPARE(form.asked, (QList<MdiForm::CloseReason>{MdiForm::CloseReason::Shutdown,
                                                      MdiForm::CloseReason::Code}));
}

void TestMdiForm::secondCloseWhileAskingDoesNothing()
{
    Form form(*m_area);
    form.showForm();
    form.whileAsking = [&] { QVERIFY(!form.closeWindow(MdiForm::CloseReason::Code)); };
    form.closeWindow(MdiForm::CloseReason::Operator);
    QCOMPARE(form.asked.size(), 1);
    QCOMPARE(form.unloads, 1);
}

void TestMdiForm::askingAloneUnloadsNothing()
{
    Form form(*m_area);
    form.showForm();
    QVERIFY(form.mayUnload(MdiForm::CloseReason::Shutdown));
    form.refuses = true;
    QVERIFY(!form.mayUnload(MdiForm::CloseReason::Shutdown));
    QVERIFY(form.isFormVisible());
    QCOMPARE(form.unloads, 0);
}

void TestMdiForm::deletingTheFormTakesTheFrame()
{
    {
        Form form(*m_area);
        form.showForm();
    }
    QCOMPARE(visibleFrames(), 0);
    QTRY_COMPARE(m_area->subWindowList().size(), 0);
}

void TestMdiForm::deletingTheAreaTakesTheForm()
{
    QPointer<Form> form = new Form(*m_area);
    form->showForm();
    m_area.reset();
    QVERIFY(!form);
}

void TestMdiForm::frameFitsItsContents()
{
    Form form(*m_area);
    form.showForm();
    QVERIFY(form.height() >= form.sizeHint().height());
    QVERIFY(form.width() >= form.sizeHint().width());
}

void TestMdiForm::framesDoNotHideEachOther()
{
    Form first(*m_area);
    Form second(*m_area);
    first.showForm();
    second.showForm();
    const QList<QMdiSubWindow*> frames = m_area->subWindowList();
    QVERIFY(frames[0]->pos() != frames[1]->pos());
    QVERIFY(m_area->viewport()->rect().contains(frames[1]->geometry()));
}

void TestMdiForm::newWindowStandsBesideTheOpenOnesWhileThereIsRoom()
{
    QList<Form*> forms;
    for (int i = 0; i < 6; ++i) {
        forms.append(new Form(*m_area));
        forms.last()->setMinimumSize(200, 120);
        forms.last()->showForm();
    }
    const QList<QMdiSubWindow*> frames = m_area->subWindowList();
    for (const QMdiSubWindow* frame : frames) {
        QVERIFY(m_area->viewport()->rect().contains(frame->geometry()));
        for (const QMdiSubWindow* other : frames)
            QVERIFY(other == frame || !other->geometry().intersects(frame->geometry()));
    }
    // The room of a closed window is free again.
    const QPoint freed = frames[1]->pos();
    forms[1]->closeWindow(MdiForm::CloseReason::Operator);
    auto* last = new Form(*m_area);
    last->showForm();
    QCOMPARE(last->parentWidget()->pos(), freed);
}

void TestMdiForm::windowsCascadeWhenThereIsNoRoom()
{
    for (int i = 0; i < 3; ++i) {
        auto* form = new Form(*m_area);
        form->setMinimumSize(500, 350);
        form->showForm();
    }
    const QList<QMdiSubWindow*> frames = m_area->subWindowList();
    QCOMPARE(frames[0]->pos(), QPoint(0, 0));
    QCOMPARE(frames[1]->pos(), QPoint(28, 28));
    QCOMPARE(frames[2]->pos(), QPoint(56, 56));
}

void TestMdiForm::enterPressesTheButtonWithTheFocus_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Space") << Qt::Key_Space;
}

void TestMdiForm::enterPressesTheButtonWithTheFocus()
{
    QFETCH(Qt::Key, key);
    Form form(*m_area);
    form.showForm();
    QSignalSpy clicked(form.button, &QPushButton::clicked);
    QTest::keyClick(form.edit, key);
    QCOMPARE(clicked.size(), 0);
    form.button->setFocus();
    QTest::keyClick(form.button, key);
    QCOMPARE(clicked.size(), 1);
    form.button->setEnabled(false);
    QTest::keyClick(&form, key);
    QCOMPARE(clicked.size(), 1);
}

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
        form = new Form(*area);
        form->showForm();
        clicked = std::make_unique<QSignalSpy>(form->button, &QPushButton::clicked);
    }
    /// Alt+A into whatever has the focus.
    static void press()
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::AltModifier);
        if (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
    }

    QMainWindow window;
    QMdiArea* area;
    Form* form;
    std::unique_ptr<QSignalSpy> opened;
    std::unique_ptr<QSignalSpy> clicked;
};

} // namespace

void TestMdiForm::accessKeySharedWithTheMenuBelongsToTheWindowInUse()
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

void TestMdiForm::accessKeyOfADisabledButtonOpensTheMenu()
{
    WithMenu program;
    QVERIFY(QTest::qWaitForWindowActive(&program.window));
    program.form->edit->setFocus();
    program.form->button->setEnabled(false);
    WithMenu::press();
    QCOMPARE(program.opened->size(), 1);
    QCOMPARE(program.clicked->size(), 0);
}

void TestMdiForm::accessKeyOfACaptionLeadsToItsField()
{
    Form form(*m_area);
    form.showForm();
    form.button->setFocus();
    QTest::keyClick(form.button, Qt::Key_H, Qt::AltModifier);
    QVERIFY(form.edit->hasFocus());
}

void TestMdiForm::accessKeyOfAFrameLeadsToItsFirstControlAndPressesNothing()
{
    Form form(*m_area);
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

QTEST_MAIN(TestMdiForm)
#include "TestMdiForm.moc"
