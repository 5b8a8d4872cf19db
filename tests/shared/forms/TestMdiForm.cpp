#include "SampleForm.h"

#include <QMdiSubWindow>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// Showing, placing, hiding and closing.
class TestMdiForm : public QObject {
    Q_OBJECT
private slots:
    void init() { m_area = showArea(); }

    void isHiddenUntilShown();
    void showingGivesTheFocus();
    void showingGivesTheFocusToTheFirstControlThatTakesIt();
    void showingBringsToTheFront();
    void hidingLeavesNoEmptyFrame();
    void showingAgainKeepsWhatWasEntered();
    void minimisedOrRolledUpIsRestored();
    void titleBarClosesForTheOperator();
    void closingGivesTheFocusToTheWindowUsedBefore();
    void closingAWindowBehindLeavesTheFocusAlone();
    void refusalKeepsTheWindow();
    void closingLeavesNoEmptyFrame();
    void closingDeletesAFormThatWasNeverShown();
    void closingPassesTheReason();
    void secondCloseWhileAskingDoesNothing();
    void askingAloneUnloadsNothing();
    void deletingTheFormTakesTheFrame();
    void deletingTheAreaTakesTheForm();
    void frameFitsItsContents();
    void framesDoNotHideEachOther();
    void newWindowStandsBesideTheOpenOnesWhileThereIsRoom();
    void windowsCascadeWhenThereIsNoRoom();
    void cascadeStaysWithinTheArea();

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

void TestMdiForm::isHiddenUntilShown()
{
    SampleForm form(*m_area);
    QVERIFY(!form.isFormVisible());
    QCOMPARE(visibleFrames(), 0);
    form.showForm();
    QVERIFY(form.isFormVisible());
    QVERIFY(form.isVisible());
}

void TestMdiForm::showingGivesTheFocus()
{
    SampleForm first(*m_area);
    SampleForm second(*m_area);
    first.showForm();
    second.showForm();
    first.showForm();
    QVERIFY(first.isAncestorOf(QApplication::focusWidget()) ||
            QApplication::focusWidget() == &first);
}

void TestMdiForm::showingGivesTheFocusToTheFirstControlThatTakesIt()
{
    SampleForm form(*m_area);
    for (QLineEdit* edit : form.findChildren<QLineEdit*>())
        edit->setEnabled(false);
    form.showForm();
    QVERIFY(form.button->hasFocus());
    form.edit->setEnabled(true);
    form.edit->setFocus();
    form.hideForm();
    form.showForm();
    QVERIFY(form.edit->hasFocus());
    form.hideForm();
    form.edit->setEnabled(false);
    form.showForm();
    QVERIFY(form.button->hasFocus());
}

void TestMdiForm::showingBringsToTheFront()
{
    SampleForm first(*m_area);
    SampleForm second(*m_area);
    first.showForm();
    second.showForm();
    QCOMPARE(m_area->activeSubWindow()->widget(), &second);
    first.showForm();
    QCOMPARE(m_area->activeSubWindow()->widget(), &first);
    QCOMPARE(m_area->subWindowList(QMdiArea::StackingOrder).constLast()->widget(), &first);
}

void TestMdiForm::hidingLeavesNoEmptyFrame()
{
    SampleForm form(*m_area);
    form.showForm();
    form.hideForm();
    QVERIFY(!form.isFormVisible());
    QCOMPARE(visibleFrames(), 0);
}

void TestMdiForm::showingAgainKeepsWhatWasEntered()
{
    SampleForm form(*m_area);
    form.showForm();
    QTest::keyClicks(form.edit, u"doce"_s);
    form.hideForm();
    form.showForm();
    QVERIFY(form.isVisible());
    QCOMPARE(form.edit->text(), u"doce"_s);
}

void TestMdiForm::minimisedOrRolledUpIsRestored()
{
    SampleForm form(*m_area);
    form.showForm();
    QMdiSubWindow* frame = m_area->subWindowList().constFirst();
    frame->showMinimized();
    QVERIFY(frame->isMinimized());
    form.showForm();
    QVERIFY(!frame->isMinimized());
    QVERIFY(form.isVisible());
    frame->showShaded();
    QVERIFY(frame->isShaded());
    form.showForm();
    QVERIFY(!frame->isShaded());
    QVERIFY(form.isVisible());
}

void TestMdiForm::titleBarClosesForTheOperator()
{
    QPointer<SampleForm> form = new SampleForm(*m_area);
    form->showForm();
    form->refuses = true;
    m_area->subWindowList().constFirst()->close();
    QCOMPARE(form->asked, QList<MdiForm::CloseReason>{MdiForm::CloseReason::Operator});
    form->refuses = false;
    m_area->subWindowList().constFirst()->close();
    QTRY_VERIFY(!form);
}

void TestMdiForm::closingGivesTheFocusToTheWindowUsedBefore()
{
    QList<SampleForm*> forms;
    for (int i = 0; i < 4; ++i) {
        forms.append(new SampleForm(*m_area));
        forms[i]->showForm();
        forms[i]->edit->setFocus();
    }
    // Used in the order 3, 2, 0, 1. Form 0 is minimised.
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
    auto* behind = new SampleForm(*m_area);
    auto* inUse = new SampleForm(*m_area);
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
    SampleForm form(*m_area);
    form.showForm();
    form.refuses = true;
    QVERIFY(!form.closeWindow(MdiForm::CloseReason::Code));
    QVERIFY(form.isFormVisible());
    QCOMPARE(form.unloads, 0);
}

void TestMdiForm::closingLeavesNoEmptyFrame()
{
    QPointer<SampleForm> form = new SampleForm(*m_area);
    form->showForm();
    QSignalSpy unloaded(form, &MdiForm::unloaded);
    QVERIFY(form->closeWindow(MdiForm::CloseReason::Code));
    QCOMPARE(unloaded.size(), 1);
    QCOMPARE(form->unloads, 1);
    QCOMPARE(visibleFrames(), 0);
    QVERIFY(form->closeWindow(MdiForm::CloseReason::Code));
    form->unloadNow();
    form->showForm();
    QCOMPARE(form->asked.size(), 1);
    QCOMPARE(unloaded.size(), 1);
    QCOMPARE(visibleFrames(), 0);
    QTRY_VERIFY(!form);
    QCOMPARE(m_area->subWindowList().size(), 0);
}

void TestMdiForm::closingDeletesAFormThatWasNeverShown()
{
    QPointer<SampleForm> form = new SampleForm(*m_area);
    QVERIFY(form->closeWindow(MdiForm::CloseReason::Code));
    QTRY_VERIFY(!form);
}

void TestMdiForm::closingPassesTheReason()
{
    SampleForm form(*m_area);
    form.refuses = true;
    form.closeWindow(MdiForm::CloseReason::Shutdown);
    form.closeWindow(MdiForm::CloseReason::Code);
    QCOMPARE(form.asked, (QList<MdiForm::CloseReason>{MdiForm::CloseReason::Shutdown,
                                                      MdiForm::CloseReason::Code}));
}

void TestMdiForm::secondCloseWhileAskingDoesNothing()
{
    SampleForm form(*m_area);
    form.showForm();
    form.whileAsking = [&] { QVERIFY(!form.closeWindow(MdiForm::CloseReason::Code)); };
    form.closeWindow(MdiForm::CloseReason::Operator);
    QCOMPARE(form.asked.size(), 1);
    QCOMPARE(form.unloads, 1);
}

void TestMdiForm::askingAloneUnloadsNothing()
{
    SampleForm form(*m_area);
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
        SampleForm form(*m_area);
        form.showForm();
    }
    QCOMPARE(visibleFrames(), 0);
    QTRY_COMPARE(m_area->subWindowList().size(), 0);
}

void TestMdiForm::deletingTheAreaTakesTheForm()
{
    QPointer<SampleForm> form = new SampleForm(*m_area);
    form->showForm();
    m_area.reset();
    QVERIFY(!form);
}

void TestMdiForm::frameFitsItsContents()
{
    SampleForm form(*m_area);
    form.showForm();
    QVERIFY(form.height() >= form.sizeHint().height());
    QVERIFY(form.width() >= form.sizeHint().width());
}

void TestMdiForm::framesDoNotHideEachOther()
{
    SampleForm first(*m_area);
    SampleForm second(*m_area);
    first.showForm();
    second.showForm();
    const QList<QMdiSubWindow*> frames = m_area->subWindowList();
    QVERIFY(frames[0]->pos() != frames[1]->pos());
    QVERIFY(m_area->viewport()->rect().contains(frames[1]->geometry()));
}

void TestMdiForm::newWindowStandsBesideTheOpenOnesWhileThereIsRoom()
{
    QList<SampleForm*> forms;
    for (int i = 0; i < 6; ++i) {
        forms.append(new SampleForm(*m_area));
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
    auto* last = new SampleForm(*m_area);
    last->showForm();
    QCOMPARE(last->parentWidget()->pos(), freed);
}

void TestMdiForm::windowsCascadeWhenThereIsNoRoom()
{
    for (int i = 0; i < 9; ++i) {
        auto* form = new SampleForm(*m_area);
        form->setMinimumSize(500, 350);
        form->showForm();
    }
    const QList<QMdiSubWindow*> frames = m_area->subWindowList();
    QCOMPARE(frames[0]->pos(), QPoint(0, 0));
    QCOMPARE(frames[1]->pos(), QPoint(28, 28));
    QCOMPARE(frames[2]->pos(), QPoint(56, 56));
    QCOMPARE(frames[7]->pos(), QPoint(196, 196));
    QCOMPARE(frames[8]->pos(), QPoint(0, 0));
}

void TestMdiForm::cascadeStaysWithinTheArea()
{
    for (int i = 0; i < 3; ++i) {
        auto* form = new SampleForm(*m_area);
        form->setMinimumSize(760, 540);
        form->showForm();
    }
    for (const QMdiSubWindow* frame : m_area->subWindowList())
        QVERIFY(m_area->viewport()->rect().contains(frame->geometry()));
}

QTEST_MAIN(TestMdiForm)
#include "TestMdiForm.moc"
