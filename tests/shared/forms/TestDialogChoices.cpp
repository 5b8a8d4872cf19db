#include "WidgetDialogs.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

FileRequest programmes()
{
    FileRequest request;
    request.title = u"Abrir"_s;
    request.filters = {u"Programas (*.hct)"_s, u"Todos los archivos (*.*)"_s};
    request.defaultExtension = u"hct"_s;
    return request;
}

} // namespace

/// What the boxes and dialogs of the toolkit offer to the editor.
class TestDialogChoices : public QObject {
    Q_OBJECT
private slots:
    void openFileByFilterBeginsWithTheFilterProposed();
    void openFileByFilterGivesTheFilterChosen();
    void saveFileProposesAName();
    void chooseGivesTheButtonPressed_data();
    void chooseGivesTheButtonPressed();
};

void TestDialogChoices::openFileByFilterBeginsWithTheFilterProposed()
{
    QString shown;
    QTimer::singleShot(0, qApp, [&shown] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        shown = dialog->findChild<QComboBox*>(u"fileTypeCombo"_s)->currentText();
        dialog->reject();
    });
    FileRequest request = programmes();
    request.filter = 1;
    QCOMPARE(WidgetDialogs::openFileByFilter(request).path, QString());
    QCOMPARE(shown, u"Todos los archivos (*.*)"_s);
}

void TestDialogChoices::openFileByFilterGivesTheFilterChosen()
{
    const QTemporaryDir folder;
    QVERIFY(QFile(folder.filePath(u"a.hct"_s)).open(QIODevice::WriteOnly));
    QTimer::singleShot(0, qApp, [&folder] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        auto* filters = dialog->findChild<QComboBox*>(u"fileTypeCombo"_s);
        filters->setCurrentIndex(1);
        emit filters->activated(1);
        dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(folder.filePath(u"a.hct"_s));
        dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
    });
    const ChosenFile chosen = WidgetDialogs::openFileByFilter(programmes());
    QCOMPARE(chosen.path, folder.filePath(u"a.hct"_s));
    QCOMPARE(chosen.filter, 1);
}

void TestDialogChoices::saveFileProposesAName()
{
    QString name;
    QTimer::singleShot(0, qApp, [&name] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        name = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->text();
        dialog->reject();
    });
    FileRequest request = programmes();
    request.fileName = u"colegio.hct"_s;
    WidgetDialogs().saveFile(request);
    QCOMPARE(name, u"colegio.hct"_s);
}

void TestDialogChoices::chooseGivesTheButtonPressed_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("button");
    QTest::newRow("the first is the default") << int(Qt::Key_Return) << 0;
    QTest::newRow("closing presses the last") << int(Qt::Key_Escape) << 2;
    QTest::newRow("the one with the focus") << int(Qt::Key_Space) << 1;
}

void TestDialogChoices::chooseGivesTheButtonPressed()
{
    QFETCH(int, key);
    QTimer::singleShot(0, qApp, [key] {
        QWidget* box = QApplication::activeModalWidget();
        if (key == Qt::Key_Space)
            box = box->findChildren<QPushButton*>().at(1);
        QTest::keyClick(box, static_cast<Qt::Key>(key));
    });
    QTEST(WidgetDialogs::choose(Dialogs::Icon::Warning, u"Editor"_s, u"¿Guardar?"_s,
                                {u"&Guardar"_s, u"&No guardar"_s, u"&Cancelar"_s}),
          "button");
}

QTEST_MAIN(TestDialogChoices)
#include "TestDialogChoices.moc"
