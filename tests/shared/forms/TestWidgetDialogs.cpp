#include "WidgetDialogs.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const FileRequest programmes{
    u"Configuración"_s,
    {u"Datos de configuración HCT-7200 (*.hct)"_s, u"Todos los archivos (*.*)"_s},
    u"sca"_s,
    {}};

void create(const QString& path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void choose(QComboBox& box, int index)
{
    box.setCurrentIndex(index);
    emit box.activated(index);
}

/// Closes each box that the dialog opens, which would wait for ever.
class BoxCloser {
public:
    BoxCloser()
    {
        QObject::connect(&m_poll, &QTimer::timeout, &m_poll, [] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
                box->close();
        });
        m_poll.start(1);
    }

private:
    QTimer m_poll;
};

} // namespace

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
    void filtersShowTheirFilesAlone_data();
    void filtersShowTheirFilesAlone();
    void openFileOpensWhatExistsUnderTheNameTyped_data();
    void openFileOpensWhatExistsUnderTheNameTyped();
    void openFileOpensWhatIsChosenInTheList();
    void openFileStaysUpWhereNeitherNameExists();
    void saveFileAppendsTheExtension_data();
    void saveFileAppendsTheExtension();
    void saveFileAsksBeforeTheNameWithItsExtensionIsOverwritten();
    void boxWhoseOwnerGoesAnswersNo();

private:
    /// Runs `answer` when the dialog of the given type is open.
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
    QStringList captions;
    onceUp<QFileDialog>([&](QFileDialog& dialog) {
        const auto* types = dialog.findChild<QComboBox*>(u"fileTypeCombo"_s);
        for (int index = 0; index < types->count(); ++index)
            captions.append(types->itemText(index));
        dialog.reject();
    });
    QCOMPARE(m_dialogs.openFile(programmes), QString());
    QCOMPARE(captions, (QStringList{u"Datos de configuración HCT-7200 (*.hct)"_s,
                                    u"Todos los archivos (*.*)"_s}));
}

void TestWidgetDialogs::filtersShowTheirFilesAlone_data()
{
    QTest::addColumn<int>("filter");
    QTest::addColumn<QStringList>("shown");
    QTest::newRow("*.hct") << 0 << QStringList{u"curso.hct"_s};
    QTest::newRow("*.*, which takes names without a dot as well")
        << 1 << QStringList{u"curso"_s, u"curso.hct"_s, u"notas.txt"_s};
}

void TestWidgetDialogs::filtersShowTheirFilesAlone()
{
    QFETCH(int, filter);
    QFETCH(QStringList, shown);
    const QTemporaryDir folder;
    for (const QString& name : {u"curso"_s, u"curso.hct"_s, u"notas.txt"_s})
        create(folder.filePath(name));
    QStringList listed;
    onceUp<QFileDialog>([&](QFileDialog& dialog) {
        choose(*dialog.findChild<QComboBox*>(u"fileTypeCombo"_s), filter);
        const auto* list = dialog.findChild<QListView*>(u"listView"_s);
        (void)QTest::qWaitFor([&] {
            listed.clear();
            for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row)
                listed.append(list->model()->index(row, 0, list->rootIndex()).data().toString());
            listed.sort();
            return listed == shown;
        });
        dialog.reject();
    });
    FileRequest request = programmes;
    request.directory = folder.path();
    m_dialogs.openFile(request);
    QCOMPARE(listed, shown);
}

void TestWidgetDialogs::openFileOpensWhatExistsUnderTheNameTyped_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<QString>("opened");
    const struct {
        const char* what;
        QStringList files;
        QString typed;
        QString opened;
    } rows[] = {
        {"no ending", {u"IMAGEN"_s}, u"IMAGEN"_s, u"IMAGEN"_s},
        {"no ending, beside one with it", {u"A"_s, u"A.sca"_s}, u"A"_s, u"A"_s},
        {"the default ending left out", {u"curso.sca"_s}, u"curso"_s, u"curso.sca"_s},
        {"the filter's ending", {u"curso.hct"_s}, u"curso.hct"_s, u"curso.hct"_s},
        {"another ending", {u"curso.txt"_s}, u"curso.txt"_s, u"curso.txt"_s},
    };
    for (const auto& row : rows) {
        QTest::addRow("%s, Enter", row.what) << row.files << row.typed << true << row.opened;
        QTest::addRow("%s, button", row.what) << row.files << row.typed << false << row.opened;
    }
}

void TestWidgetDialogs::openFileOpensWhatExistsUnderTheNameTyped()
{
    QFETCH(QStringList, files);
    QFETCH(QString, typed);
    QFETCH(bool, byKey);
    QFETCH(QString, opened);
    const QTemporaryDir folder;
    for (const QString& name : files)
        create(folder.filePath(name));
    const BoxCloser refusals;
    onceUp<QFileDialog>([&](QFileDialog& dialog) {
        auto* name = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
        QTest::keyClicks(name, typed);
        if (byKey)
            QTest::keyClick(name, Qt::Key_Return);
        else
            dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
        if (dialog.isVisible())
            dialog.reject();
    });
    FileRequest request = programmes;
    request.directory = folder.path();
    QCOMPARE(m_dialogs.openFile(request), folder.filePath(opened));
}

void TestWidgetDialogs::openFileOpensWhatIsChosenInTheList()
{
    const QTemporaryDir folder;
    create(folder.filePath(u"IMAGEN"_s));
    onceUp<QFileDialog>([&](QFileDialog& dialog) {
        choose(*dialog.findChild<QComboBox*>(u"fileTypeCombo"_s), 1);
        const auto* list = dialog.findChild<QListView*>(u"listView"_s);
        (void)QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == 1; });
        const QModelIndex file = list->model()->index(0, 0, list->rootIndex());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(file).center());
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
        if (dialog.isVisible())
            dialog.reject();
    });
    FileRequest request = programmes;
    request.directory = folder.path();
    QCOMPARE(m_dialogs.openFile(request), folder.filePath(u"IMAGEN"_s));
}

void TestWidgetDialogs::openFileStaysUpWhereNeitherNameExists()
{
    const QTemporaryDir folder;
    QString told;
    bool staysUp = false;
    onceUp<QFileDialog>([&](QFileDialog& dialog) {
        auto* name = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
        QTest::keyClicks(name, u"curso"_s);
        onceUp<QMessageBox>([&](QMessageBox& box) {
            told = box.text();
            box.close();
        });
        QTest::keyClick(name, Qt::Key_Return);
        staysUp = dialog.isVisible();
        dialog.reject();
    });
    FileRequest request = programmes;
    request.directory = folder.path();
    QCOMPARE(m_dialogs.openFile(request), QString());
    QVERIFY(staysUp);
    QVERIFY2(told.startsWith(u"curso\n"_s), qPrintable(told));
}

void TestWidgetDialogs::saveFileAppendsTheExtension_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("filter");
    QTest::addColumn<QString>("saved");
    // The default extension, not that of the filter.
    QTest::newRow("none") << u"curso"_s << 0 << u"curso.sca"_s;
    QTest::newRow("none, all files") << u"curso"_s << 1 << u"curso.sca"_s;
    QTest::newRow("the filter's") << u"curso.hct"_s << 0 << u"curso.hct"_s;
    QTest::newRow("the filter's, all files") << u"curso.hct"_s << 1 << u"curso.hct"_s;
    QTest::newRow("another") << u"curso.txt"_s << 0 << u"curso.txt"_s;
    QTest::newRow("none, in a folder with a dot") << u"v.1/curso"_s << 0 << u"v.1/curso.sca"_s;
}

void TestWidgetDialogs::saveFileAppendsTheExtension()
{
    QFETCH(QString, typed);
    QFETCH(int, filter);
    QFETCH(QString, saved);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"v.1"_s));
    onceUp<QFileDialog>([&](QFileDialog& dialog) {
        choose(*dialog.findChild<QComboBox*>(u"fileTypeCombo"_s), filter);
        dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(folder.filePath(typed));
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    FileRequest request = programmes;
    request.directory = folder.path();
    QCOMPARE(m_dialogs.saveFile(request), folder.filePath(saved));
}

void TestWidgetDialogs::saveFileAsksBeforeTheNameWithItsExtensionIsOverwritten()
{
    const QTemporaryDir folder;
    create(folder.filePath(u"curso.sca"_s));
    QString question;
    onceUp<QFileDialog>([&](QFileDialog& dialog) {
        dialog.selectFile(u"curso"_s);
        onceUp<QMessageBox>([&](QMessageBox& box) {
            question = box.text();
            box.button(QMessageBox::No)->click();
        });
        QMetaObject::invokeMethod(&dialog, "accept");
        dialog.reject();
    });
    FileRequest request = programmes;
    request.directory = folder.path();
    QCOMPARE(m_dialogs.saveFile(request), QString());
    QVERIFY2(question.contains(u"curso.sca"), qPrintable(question));
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
