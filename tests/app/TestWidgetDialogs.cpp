#include "WidgetDialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

class TestWidgetDialogs : public QObject {
    Q_OBJECT
private slots:
    void tellShowsItsTextAndOneButton();
    void confirmIsTrueOnlyForYes_data();
    void confirmIsTrueOnlyForYes();
    void confirmHasItsIconAndSpanishButtons();
    void textIsShownAsItStands();
    void lineBreaksOfTheTextsArePlainOnes();
    void boxBelongsToTheMainWindowWhileAnotherProgramIsActive();
    void promptIsShownAsItStands();
    void askTextGivesWhatWasTyped();
    void askTextGivesNothingWhenCancelled();
    void openFileOffersTheFilters();
    void saveFileAppendsTheExtension();
    void boxWhoseOwnerGoesAnswersNo();

private:
    /// Runs `answer` once the dialog of the given type is up.
    template<class Dialog>
    void onceUp(std::function<void(Dialog&)> answer)
    {
        auto* poll = new QTimer(this);
        connect(poll, &QTimer::timeout, this, [poll, answer] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isVisible())
                return;
            poll->deleteLater();
            poll->stop();
            answer(*dialog);
        });
        poll->start(1);
    }

    WidgetDialogs m_dialogs;
};

void TestWidgetDialogs::tellShowsItsTextAndOneButton()
{
    QString text;
    QString title;
    QStringList buttons;
    onceUp<QMessageBox>([&](QMessageBox& box) {
        text = box.text();
        title = box.windowTitle();
        for (const QAbstractButton* button : box.buttons())
            buttons.append(button->text());
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    m_dialogs.tell(Dialogs::Icon::Information, QString(), u"Hecho"_s);
    QCOMPARE(text, u"Hecho"_s);
    QCOMPARE(title, u"Control Equipo HCT"_s);
    QCOMPARE(buttons, QStringList{u"&Aceptar"_s});
}

void TestWidgetDialogs::confirmIsTrueOnlyForYes_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("agreed");
    QTest::newRow("yes") << 0 << int(QMessageBox::Yes) << true;
    QTest::newRow("no") << 0 << int(QMessageBox::No) << false;
    QTest::newRow("escape") << int(Qt::Key_Escape) << 0 << false;
    QTest::newRow("enter, with no in front") << int(Qt::Key_Return) << 0 << false;
    QTest::newRow("title bar") << 0 << 0 << false;
}

void TestWidgetDialogs::confirmIsTrueOnlyForYes()
{
    QFETCH(int, key);
    QFETCH(int, button);
    QFETCH(bool, agreed);
    onceUp<QMessageBox>([key, button](QMessageBox& box) {
        if (key != 0)
            QTest::keyClick(&box, static_cast<Qt::Key>(key));
        else if (button != 0)
            box.button(static_cast<QMessageBox::StandardButton>(button))->click();
        else
            box.close();
    });
    QCOMPARE(m_dialogs.confirm(Dialogs::Icon::Warning, u"Título"_s, u"¿Seguro?"_s), agreed);
}

void TestWidgetDialogs::confirmHasItsIconAndSpanishButtons()
{
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QStringList buttons;
    onceUp<QMessageBox>([&](QMessageBox& box) {
        icon = box.icon();
        for (const QAbstractButton* button : box.buttons())
            buttons.append(button->text());
        box.close();
    });
    m_dialogs.confirm(Dialogs::Icon::Warning, u"Título"_s, u"¿Seguro?"_s);
    QCOMPARE(icon, QMessageBox::Warning);
    buttons.sort();
    QCOMPARE(buttons, (QStringList{u"&No"_s, u"&Sí"_s}));
}

void TestWidgetDialogs::textIsShownAsItStands()
{
    Qt::TextFormat format = Qt::AutoText;
    onceUp<QMessageBox>([&](QMessageBox& box) {
        format = box.textFormat();
        box.close();
    });
    m_dialogs.tell(Dialogs::Icon::Critical, QString(), u"<b>fichero</b>.hct"_s);
    QCOMPARE(format, Qt::PlainText);
}

void TestWidgetDialogs::lineBreaksOfTheTextsArePlainOnes()
{
    const QString text = u"No se ha podido.\r\nCompruebe la línea.\n\rHecho."_s;
    QStringList shown;
    onceUp<QMessageBox>([&](QMessageBox& box) {
        shown.append(box.text());
        box.close();
    });
    m_dialogs.tell(Dialogs::Icon::Critical, QString(), text);
    onceUp<QMessageBox>([&](QMessageBox& box) {
        shown.append(box.text());
        box.close();
    });
    m_dialogs.confirm(Dialogs::Icon::Warning, QString(), text);
    onceUp<QInputDialog>([&](QInputDialog& dialog) {
        shown.append(dialog.labelText());
        dialog.reject();
    });
    m_dialogs.askText(QString(), text);
    const QString plain = u"No se ha podido.\nCompruebe la línea.\n\nHecho."_s;
    QCOMPARE(shown, QStringList({plain, plain, plain}));
}

void TestWidgetDialogs::boxBelongsToTheMainWindowWhileAnotherProgramIsActive()
{
    QWidget main;
    main.show();
    QVERIFY(QTest::qWaitForWindowActive(&main));
    QApplication::setActiveWindow(nullptr);
    QVERIFY(!QApplication::activeWindow());
    const QWidget* parent = nullptr;
    onceUp<QMessageBox>([&](QMessageBox& box) {
        parent = box.parentWidget();
        box.close();
    });
    m_dialogs.tell(Dialogs::Icon::Critical, QString(), u"Error"_s);
    QCOMPARE(parent, &main);
}

void TestWidgetDialogs::promptIsShownAsItStands()
{
    Qt::TextFormat format = Qt::AutoText;
    onceUp<QInputDialog>([&](QInputDialog& dialog) {
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            if (label->text() == u"<i>1</i>"_s)
                format = label->textFormat();
        dialog.reject();
    });
    m_dialogs.askText(QString(), u"<i>1</i>"_s);
    QCOMPARE(format, Qt::PlainText);
}

void TestWidgetDialogs::askTextGivesWhatWasTyped()
{
    onceUp<QInputDialog>([](QInputDialog& dialog) {
        QCOMPARE(dialog.labelText(), u"Número"_s);
        QTest::keyClicks(dialog.findChild<QLineEdit*>(), u"981"_s);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    QCOMPARE(m_dialogs.askText(QString(), u"Número"_s), std::optional(u"981"_s));
}

void TestWidgetDialogs::askTextGivesNothingWhenCancelled()
{
    onceUp<QInputDialog>([](QInputDialog& dialog) {
        QTest::keyClicks(dialog.findChild<QLineEdit*>(), u"981"_s);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    QCOMPARE(m_dialogs.askText(QString(), u"Número"_s), std::nullopt);
}

void TestWidgetDialogs::openFileOffersTheFilters()
{
    QStringList filters;
    onceUp<QFileDialog>([&](QFileDialog& dialog) {
        filters = dialog.nameFilters();
        dialog.reject();
    });
    QCOMPARE(m_dialogs.openFile({u"Abrir"_s, {u"Firmware de equipo (*.hex)"_s}, u"hex"_s, {}}),
             QString());
    QCOMPARE(filters, QStringList{u"Firmware de equipo (*.hex)"_s});
}

void TestWidgetDialogs::saveFileAppendsTheExtension()
{
    const QTemporaryDir folder;
    onceUp<QFileDialog>([](QFileDialog& dialog) {
        dialog.selectFile(u"curso"_s);
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    QCOMPARE(m_dialogs.saveFile({u"Guardar"_s, {u"Programas (*.hct)"_s}, u"hct"_s, folder.path()}),
             folder.filePath(u"curso.hct"_s));
}

void TestWidgetDialogs::boxWhoseOwnerGoesAnswersNo()
{
    auto* owner = new QWidget;
    owner->show();
    QVERIFY(QTest::qWaitForWindowActive(owner));
    onceUp<QMessageBox>([owner](QMessageBox&) { delete owner; });
    QVERIFY(!m_dialogs.confirm(Dialogs::Icon::Warning, QString(), u"¿Seguro?"_s));
}

QTEST_MAIN(TestWidgetDialogs)
#include "TestWidgetDialogs.moc"
