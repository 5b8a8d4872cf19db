// Takes pictures of every window of the editor, for the manual.
#include "EditorDocks.h"
#include "EditorProgram.h"
#include "FileRegistry.h"
#include "PreciseTimer.h"
#include "ProgrammeFile.h"
#include "Spanish.h"
#include "WidgetEditorDialogs.h"
#include "frmEditor.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QDockWidget>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

/// Until a window has been painted.
void settle()
{
    QEventLoop loop;
    QTimer::singleShot(400, &loop, &QEventLoop::quit);
    loop.exec();
}

void addLessons(AlarmBlock& block, int firstMinute, bool isWholeWeek)
{
    int minute = firstMinute;
    for (std::size_t row = 0; row < 8; ++row) {
        Alarm& alarm = block.Alarms[row];
        alarm.Hour = static_cast<quint8>(minute / 60);
        alarm.Minute = static_cast<quint8>(minute % 60);
        alarm.setWorkingDays(true);
        alarm.set(DayFlag::Saturday, isWholeWeek && row < 3);
        alarm.set(DayFlag::OnHoliday, isWholeWeek && row == 0);
        minute += row == 2 ? 80 : 55;
    }
}

/// A school: lessons, the playground with a mistake, and the bell of the canteen.
Programme school(ClockModel model)
{
    Programme programme;
    const bool isWholeWeek = model == ClockModel::Hct7300;
    addLessons(programme.blocks[0], 9 * 60, isWholeWeek);
    addLessons(programme.blocks[1], 9 * 60 + 5, false);
    programme.blocks[1].Alarms[3] = programme.blocks[1].Alarms[2];
    programme.blocks[2].Alarms[0] = {{true, true, true, true, true}, 14, 0};
    programme.blocks[2].Alarms[1] = {{true, false, true}, 16, 30};
    programme.blocks[0].Mode = isWholeWeek ? 2 : 0;
    for (AlarmBlock& block : programme.blocks)
        block.Duration = 8;
    programme.table.holidays = {{{1, 1}, {6, 1}, {1, 5}, {25, 7}, {12, 10}, {30, 2}}};
    programme.table.vacations = {{{23, 12, 7, 1}, {1, 4, 9, 4}, {1, 7, 31, 8}}};
    return programme;
}

/// With another bell, one more and another holiday than that of the HCT-7200.
Programme lastYear()
{
    Programme programme = school(ClockModel::Hct7200);
    programme.blocks[0].Alarms[1].Minute = 50;
    programme.blocks[0].Alarms[9] = {{true, true}, 18, 0};
    programme.table.holidays[3] = {24, 7};
    return programme;
}

bool savePicture(QWidget& window, const QString& path)
{
    // Some styles draw the texts of other windows in grey.
    window.activateWindow();
    settle();
    return window.grab().save(path);
}

/// Does something that shows a box or a modal dialog, pictures that, and closes it.
bool pictureBox(const std::function<void()>& show, const QString& path)
{
    bool isGood = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        QWidget* box = QApplication::activeModalWidget();
        if (!box)
            return;
        watch.stop();
        isGood = savePicture(*box, path);
        box->close();
    });
    watch.start(50);
    show();
    return isGood;
}

class EditorTour {
public:
    EditorTour(frmEditor& window, const QDir& folder, const QString& prefix)
        : m_window(window), m_folder(folder), m_prefix(prefix)
    {}

    bool savePictures()
    {
        m_window.setSheetTitle(u"Timbres, curso 2026-27"_s);
        bool isGood = true;
        for (int tab = 1; tab <= 5; ++tab) {
            trigger(u"mnuVer%1"_s.arg(tab));
            isGood = save(m_window, u"pestana%1"_s.arg(tab)) && isGood;
        }
        trigger(u"mnuVer2"_s);
        m_window.findChild<QDockWidget*>(u"docProblemas"_s)->show();
        isGood = save(m_window, u"problemas"_s) && isGood;
        trigger(u"mnuSerie"_s);
        auto* series = m_window.findChild<QDialog*>(u"dlgSerie"_s);
        isGood = save(*series, u"serie"_s) && isGood;
        series->reject();
        return savePanelsAndBoxes() && isGood;
    }

private:
    bool savePanelsAndBoxes()
    {
        m_window.findChild<QDockWidget*>(u"docProblemas"_s)->hide();
        trigger(u"mnuVer1"_s);
        m_window.findChild<EditorDocks*>()->compareWith(u"colegio-2025.hct"_s, lastYear(), {});
        bool isGood = save(m_window, u"comparacion"_s);
        m_window.findChild<QDockWidget*>(u"docComparacion"_s)->hide();
        isGood =
            pictureBox([this] { trigger(u"mnuVistaPrevia"_s); }, path(u"vista-previa"_s)) && isGood;
        Programme changed = m_window.document().programme();
        changed.blocks[0].Alarms[0].Minute = 1;
        m_window.document().edit(changed);
        isGood = pictureBox([this] { trigger(u"mnuCerrar"_s); }, path(u"cerrar"_s)) && isGood;
        m_window.document().undoStack().undo();
        return isGood;
    }

    void trigger(const QString& name) { m_window.findChild<QAction*>(name)->trigger(); }
    QString path(const QString& name) const
    {
        return m_folder.filePath(m_prefix + name + u".png"_s);
    }
    bool save(QWidget& window, const QString& name) { return savePicture(window, path(name)); }

    frmEditor& m_window;
    const QDir m_folder;
    const QString m_prefix;
};

/// Leaves what a run without an end leaves.
void leaveUnsavedWork(const EditorEnvironment& environment)
{
    EditorProgram program(environment);
    program.start({});
    program.windows().constFirst()->document().edit(school(ClockModel::Hct7200));
    program.keepUnsavedWork();
}

bool walk(EditorProgram& program, const QDir& folder)
{
    bool isGood = pictureBox(
        [&program] {
            program.start({});
            settle();
        },
        folder.filePath(u"editor-recuperar.png"_s));
    const QTemporaryDir files;
    for (const ClockModel model : {ClockModel::Hct7200, ClockModel::Hct7300}) {
        const QString name = model == ClockModel::Hct7200 ? u"7200"_s : u"7300"_s;
        const QString path = files.filePath(u"colegio-%1.hct"_s.arg(name));
        isGood = ProgrammeFile::save(path, school(model), model) && isGood;
        program.open(path, model);
        EditorTour tour(*program.windows().constLast(), folder, u"editor-%1-"_s.arg(name));
        isGood = tour.savePictures() && isGood;
    }
    return isGood;
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QTranslator toolkit;
    speakSpanish(toolkit);
    const QDir folder(QCoreApplication::arguments().value(1, u"."_s));
    const QTemporaryDir data;
    WidgetEditorDialogs dialogs;
    FileRegistry registry(data.filePath(u"registry.reg"_s));
    const EditorEnvironment environment{dialogs, registry, data.filePath(u"recovery"_s),
                                        [] { return std::make_unique<PreciseTimer>(); }};
    leaveUnsavedWork(environment);
    EditorProgram program(environment);
    bool isGood = false;
    QTimer::singleShot(0, &program, [&] {
        isGood = QDir().mkpath(folder.path()) && walk(program, folder);
        QCoreApplication::quit();
    });
    QCoreApplication::exec();
    if (!isGood)
        QTextStream(stderr) << "Not every window could be pictured." << Qt::endl;
    return isGood ? 0 : 1;
}
