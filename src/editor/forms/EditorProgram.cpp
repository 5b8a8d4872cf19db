#include "EditorProgram.h"

#include "DocumentFiles.h"
#include "IntervalTimer.h"
#include "ModelProposal.h"
#include "ProgrammeTexts.h"
#include "Recovery.h"
#include "frmEditor.h"

#include <QFileInfo>
#include <QMenu>
#include <QSessionManager>

#include <algorithm>

using namespace Qt::StringLiterals;

EditorProgram::EditorProgram(const EditorEnvironment& environment)
    : m_environment(environment),
      m_dialogs(environment.dialogs, [this] { return startFolder(); }),
      m_recent(environment.registry)
{}

EditorProgram::~EditorProgram()
{
    for (frmEditor* window : windows()) {
        window->disconnect(this);
        forget(*window);
        delete window;
    }
}

QList<frmEditor*> EditorProgram::windows() const
{
    QList<frmEditor*> all;
    for (const Open& open : m_open)
        all.append(open.window);
    return all;
}

void EditorProgram::start(const QStringList& paths, std::optional<ClockModel> model)
{
    frmEditor& first = addWindow(model.value_or(ClockModel::Hct7200));
    // In the event loop, which a box at this point would run before its time.
    QMetaObject::invokeMethod(
        this, [this, &first, paths, model] { openFirst(first, paths, model); },
        Qt::QueuedConnection);
}

void EditorProgram::openFirst(frmEditor& first, const QStringList& paths,
                              std::optional<ClockModel> model)
{
    // A file is shown at once, but the box about one that cannot be read stands on a window: it
    // must not be the last that is closed.
    const bool isReadable = std::all_of(paths.begin(), paths.end(), [](const QString& path) {
        return QFileInfo(path).isReadable();
    });
    if (!isReadable)
        first.show();
    for (const QString& path : paths)
        open(path, model.value_or(ModelProposal::of(path, m_recent)), &first);
    first.show();
    offerUnsavedWork();
}

frmEditor& EditorProgram::addWindow(ClockModel model)
{
    auto* window = new frmEditor(model, m_dialogs);
    std::unique_ptr<IntervalTimer> timer = m_environment.makeTimer();
    auto recovery =
        std::make_unique<Recovery>(window->document(), m_environment.recoveryFolder, *timer);
    connect(recovery.get(), &Recovery::failed, window, [window] {
        window->showMessage(u"No se puede guardar una copia de seguridad de lo que se edita: "
                            "guarde a menudo."_s);
    });
    m_open.push_back({window, std::move(timer), std::move(recovery)});
    connectWindow(*window);
    return *window;
}

void EditorProgram::connectWindow(frmEditor& window)
{
    connect(&window, &frmEditor::newRequested, this, &EditorProgram::openNew);
    connect(&window, &frmEditor::openRequested, this, [this, &window] { openByDialog(window); });
    connect(&window, &frmEditor::filesDropped, this, [this, &window](const QStringList& paths) {
        for (const QString& path : paths)
            open(path, ModelProposal::of(path, m_recent), &window);
    });
    connect(&window, &frmEditor::quitRequested, this, &EditorProgram::quit);
    connect(&window, &frmEditor::closed, this, [this, &window] { forget(window); });
    connect(&window, &frmEditor::recentMenuOpened, this,
            [this, &window](QMenu& menu) { fillRecent(menu, window); });
    connect(&window, &frmEditor::sheetTitleEdited, this, [this, &window](const QString& title) {
        const QString path = window.document().path();
        // Of many files that are open it may be the eleventh, which is in the list no more.
        if (!path.isEmpty() && !m_recent.setWallTitle(path, title))
            noteFile(window);
    });
    connect(&window.document(), &ProgrammeDocument::fileChanged, this,
            [this, &window] { noteFile(window); });
}

void EditorProgram::forget(const frmEditor& window)
{
    const auto found = std::find_if(m_open.begin(), m_open.end(),
                                    [&window](const Open& open) { return open.window == &window; });
    if (found == m_open.end())
        return;
    // The timer is used until the end of what keeps the unsaved work.
    found->recovery.reset();
    m_open.erase(found);
}

void EditorProgram::openNew(ClockModel model) { addWindow(model).show(); }

void EditorProgram::openByDialog(frmEditor& from)
{
    FileRequest request;
    request.title = u"Abrir"_s;
    request.filters = DocumentFiles::filters();
    request.defaultExtension = u"hct"_s;
    request.directory = from.document().folder();
    request.filter = from.document().model() == ClockModel::Hct7200 ? 0 : 1;
    const ChosenFile chosen = m_dialogs.openFileByFilter(request);
    if (chosen.path.isEmpty())
        return;
    const ClockModel model = chosen.filter == 0 ? ClockModel::Hct7200 : ClockModel::Hct7300;
    if (const auto agreed = agreedModel(chosen.path, model))
        open(chosen.path, *agreed, &from);
}

QString EditorProgram::startFolder() const
{
    const QList<RecentFiles::File> recent = m_recent.files();
    const QFileInfo folder(recent.isEmpty() ? QString() : QFileInfo(recent.first().path).path());
    return folder.isDir() ? folder.filePath() : m_environment.documentsFolder;
}

std::optional<ClockModel> EditorProgram::agreedModel(const QString& path, ClockModel chosen)
{
    // A file without modes above 1 tells nothing; that it was open before does.
    const ClockModel told = ModelProposal::of(path, m_recent);
    const bool isKnown = m_recent.find(path).has_value() || told == ClockModel::Hct7300;
    if (!isKnown || told == chosen)
        return chosen;
    const QString reason = m_recent.find(path) ? u"La última vez se abrió como programa del %1."_s
                                               : u"Tiene modos que solo existen en el %1."_s;
    const int answer = m_dialogs.choose(
        Dialogs::Icon::Information, editorTitle(),
        u"\"%1\": %2"_s.arg(QFileInfo(path).fileName(),
                            reason.arg(ProgrammeTexts::modelName(told))),
        {u"Abrir como %1"_s.arg(ProgrammeTexts::modelName(told)),
         u"Abrir como %1"_s.arg(ProgrammeTexts::modelName(chosen)), u"&Cancelar"_s});
    if (answer == 2)
        return std::nullopt;
    return answer == 0 ? told : chosen;
}

frmEditor* EditorProgram::windowOf(const QString& path) const
{
    for (const Open& open : m_open) {
        const QString held = open.window->document().path();
        if (!held.isEmpty() && !path.isEmpty() && QFileInfo(held) == QFileInfo(path))
            return open.window;
    }
    return nullptr;
}

void EditorProgram::open(const QString& path, ClockModel model, frmEditor* from)
{
    if (frmEditor* window = windowOf(path)) {
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
        window->raise();
        window->activateWindow();
        return;
    }
    const bool isReused = from && from->isUntouched();
    frmEditor& window = isReused ? *from : addWindow(model);
    takeTitle(window, path);
    const bool isOpen = window.open(QFileInfo(path).absoluteFilePath(), model);
    if (isOpen)
        window.show();
    else if (!isReused)
        window.closeNow();
    if (!isOpen && !QFileInfo::exists(path))
        m_recent.remove(path);
}

void EditorProgram::noteFile(frmEditor& window)
{
    const QString path = window.document().path();
    if (path.isEmpty())
        return;
    m_recent.add(path, window.document().model());
    // The title goes with the programme to another name.
    m_recent.setWallTitle(path, window.sheetTitle());
}

void EditorProgram::takeTitle(frmEditor& window, const QString& path)
{
    const auto known = m_recent.find(path);
    window.setSheetTitle(known ? known->wallTitle : QString());
}

void EditorProgram::fillRecent(QMenu& menu, frmEditor& from)
{
    int number = 0;
    for (const RecentFiles::File& file : m_recent.files()) {
        const QFileInfo info(file.path);
        QString text = u"%1 (%2)"_s.arg(info.fileName(), info.path());
        text.replace(u'&', u"&&"_s);
        ++number;
        const QString key = number < 10 ? u"&%1 "_s.arg(number) : u"1&0 "_s;
        QAction* action = menu.addAction(key + text);
        connect(action, &QAction::triggered, this,
                [this, file, &from] { open(file.path, file.model, &from); });
    }
    if (menu.isEmpty())
        menu.addAction(u"(ninguno)"_s)->setEnabled(false);
}

void EditorProgram::offerUnsavedWork()
{
    std::vector<RecoveryFolder::Abandoned> found =
        RecoveryFolder::abandoned(m_environment.recoveryFolder);
    if (found.empty())
        return;
    QString names;
    for (const RecoveryFolder::Abandoned& work : found)
        names += u"%1, %2\n"_s.arg(work.work.path.isEmpty() ? u"Sin título"_s
                                                            : QFileInfo(work.work.path).fileName(),
                                   work.written.toString(u"d/M/yyyy H:mm"_s));
    const int answer = m_dialogs.choose(
        Dialogs::Icon::Information, editorTitle(),
        u"La última vez quedó trabajo sin guardar:\n\n%1\n¿Qué quiere hacer con él?"_s.arg(names),
        {u"&Recuperar"_s, u"&Descartar"_s, u"&Más tarde"_s});
    for (RecoveryFolder::Abandoned& work : found) {
        if (answer == 0)
            recover(std::move(work));
        else if (answer == 1)
            RecoveryFolder::discard(std::move(work));
    }
}

void EditorProgram::recover(RecoveryFolder::Abandoned abandoned)
{
    frmEditor& window = windowFor(abandoned.work);
    takeTitle(window, abandoned.work.path);
    window.recover(abandoned.work);
    window.show();
    const auto open = std::find_if(m_open.begin(), m_open.end(),
                                   [&window](const Open& each) { return each.window == &window; });
    // The window keeps a copy of its own by now. Where it cannot, the old one stays.
    if (open->recovery->writeNow())
        RecoveryFolder::discard(std::move(abandoned));
}

frmEditor& EditorProgram::windowFor(const UnsavedWork& work)
{
    frmEditor* same = windowOf(work.path);
    if (same && !same->document().isModified())
        return *same;
    const auto free = std::find_if(m_open.begin(), m_open.end(),
                                   [](const Open& open) { return open.window->isUntouched(); });
    return free == m_open.end() ? addWindow(work.model) : *free->window;
}

bool EditorProgram::mayCloseAll()
{
    const QList<frmEditor*> all = windows();
    return std::all_of(all.begin(), all.end(),
                       [](frmEditor* window) { return window->mayClose(); });
}

bool EditorProgram::quit()
{
    if (!mayCloseAll())
        return false;
    for (frmEditor* window : windows())
        window->closeNow();
    return true;
}

void EditorProgram::keepUnsavedWork()
{
    for (const Open& open : m_open)
        open.recovery->keep();
}

void EditorProgram::endSession(QSessionManager& session)
{
    if (!session.allowsInteraction())
        return keepUnsavedWork();
    if (!quit())
        session.cancel();
    session.release();
}
