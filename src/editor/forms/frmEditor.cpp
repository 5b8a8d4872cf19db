#include "frmEditor.h"

#include "ChangedPlace.h"
#include "CountingDialogs.h"
#include "DocumentFiles.h"
#include "EditorDocks.h"
#include "EditorMenus.h"
#include "ModelChange.h"
#include "NoticeBar.h"
#include "ProgrammePages.h"
#include "ProgrammeTexts.h"
#include "RowCommands.h"
#include "RowNumber.h"
#include "WallPrinting.h"
#include "WidgetDescription.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

frmEditor::frmEditor(ClockModel model, CountingDialogs& dialogs)
    : m_dialogs(dialogs),
      m_document(new ProgrammeDocument(model, this)),
      m_files(new DocumentFiles(*m_document, dialogs, this)),
      m_pages(new ProgrammePages(*m_document)),
      m_rows(new RowCommands(*m_document, *m_pages, this)),
      m_paper(new WallPrinting(
          *m_document, dialogs, [this] { return sheetTitle(); }, this)),
      m_notice(new NoticeBar),
      m_docks(new EditorDocks(*m_document, *this)),
      m_menus(new EditorMenus(*this, {*m_document, *m_pages, *m_rows, *m_docks, *m_paper}))
{
    setObjectName(u"frmEditor"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setAcceptDrops(true);
    build();
    makeStatusBar();
    connectMenus();
    connect(m_document, &ProgrammeDocument::changed, this, &frmEditor::showState);
    connect(m_document, &ProgrammeDocument::modifiedChanged, this, &QWidget::setWindowModified);
    connect(m_document, &ProgrammeDocument::fileChanged, this, &frmEditor::showFile);
    connect(m_docks, &EditorDocks::chosen, this, &frmEditor::goTo);
    connect(m_docks, &EditorDocks::left, m_pages, &ProgrammePages::focusShown);
    connect(m_rows, &RowCommands::told, this, &frmEditor::showMessage);
    connect(m_paper, &WallPrinting::told, this, &frmEditor::showMessage);
    connect(m_pages, &ProgrammePages::selectionChanged, this, &frmEditor::showSelection);
    connect(m_pages, &ProgrammePages::refused, this, &frmEditor::showMessage);
    connect(m_pages, &ProgrammePages::sheetTitleEdited, this,
            [this] { emit sheetTitleEdited(sheetTitle()); });
    showFile();
    showState();
    resize(0, 0);
    growToPages();
}

// What the members tell while they go concerns this window no more.
frmEditor::~frmEditor() { m_document->disconnect(this); }

void frmEditor::build()
{
    auto* centre = new QWidget(this);
    auto* layout = new QVBoxLayout(centre);
    layout->addWidget(m_notice);
    layout->addWidget(m_pages, 1);
    setCentralWidget(centre);
}

void frmEditor::makeStatusBar()
{
    m_selection = new QLabel(this);
    m_selection->setObjectName(u"lblElegidos"_s);
    m_modelLabel = new QLabel(this);
    m_modelLabel->setObjectName(u"lblModelo"_s);
    m_problemCount = new QPushButton(this);
    m_problemCount->setObjectName(u"cmdProblemas"_s);
    m_problemCount->setFlat(true);
    setHint(*m_problemCount, u"Muestra los problemas en una lista"_s);
    connect(m_problemCount, &QPushButton::clicked, m_docks, &EditorDocks::openProblems);
    statusBar()->addWidget(m_selection);
    statusBar()->addPermanentWidget(m_problemCount);
    statusBar()->addPermanentWidget(m_modelLabel);
}

void frmEditor::connectMenus()
{
    using Menus = EditorMenus;
    connect(m_menus, &Menus::newRequested, this, &frmEditor::newRequested);
    connect(m_menus, &Menus::openRequested, this, &frmEditor::openRequested);
    connect(m_menus, &Menus::recentMenuOpened, this, &frmEditor::recentMenuOpened);
    connect(m_menus, &Menus::quitRequested, this, &frmEditor::quitRequested);
    connect(m_menus, &Menus::saveRequested, this, [this] { save(&DocumentFiles::save); });
    connect(m_menus, &Menus::saveAsRequested, this, [this] { save(&DocumentFiles::saveAs); });
    connect(m_menus, &Menus::compareRequested, this, &frmEditor::compare);
    connect(m_menus, &Menus::undoRequested, this, &frmEditor::undo);
    connect(m_menus, &Menus::redoRequested, this, &frmEditor::redo);
    connect(m_menus, &Menus::modelChosen, this, &frmEditor::changeModel);
    connect(m_menus, &Menus::aboutRequested, this, &frmEditor::showAbout);
}

void frmEditor::showSelection()
{
    const AlarmGrid::Rows rows = m_pages->selectedRows();
    if (rows.isEmpty())
        m_selection->clear();
    else if (rows.count() == 1)
        m_selection->setText(u"Elegido: aviso %1"_s.arg(rows.first + 1));
    else
        m_selection->setText(u"Elegidos: avisos %1 a %2"_s.arg(rows.first + 1).arg(rows.last + 1));
}

void frmEditor::growToPages()
{
    if (isMaximized() || isFullScreen())
        return;
    // By itself a window gets two thirds of the screen at most; this one needs more. Its pages are
    // made later; that of the year needs so many lines of text.
    constexpr int linesOfTheYear = 53;
    const QSize pages = m_pages->usualSize();
    const int besidePages = sizeHint().height() - m_pages->sizeHint().height();
    QSize size = sizeHint().expandedTo(
        {pages.width(),
         std::max(pages.height() + besidePages, linesOfTheYear * fontMetrics().lineSpacing())});
    // The panels at the bottom make the rows scroll.
    size.rwidth() += style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    const QScreen* on = screen();
    if (on)
        size = size.boundedTo(on->availableSize() * 0.94);
    resize(size.expandedTo(this->size()));
}

bool frmEditor::isUntouched() const
{
    return m_document->path().isEmpty() && !m_document->isModified() &&
           m_document->undoStack().count() == 0;
}

bool frmEditor::open(const QString& path, ClockModel model)
{
    const ProgrammeDocument::OpenResult result = m_document->open(path, model);
    if (!result.isOpen()) {
        m_dialogs.tell(Dialogs::Icon::Critical, editorTitle(), result.failure);
        return false;
    }
    QList<ProgrammeProblem> misread;
    for (const ProgrammeProblem& problem : result.problems)
        if (problem.kind != ProgrammeProblem::Kind::Impossible)
            misread.append(problem);
    growToPages();
    m_docks->setReadingProblems(misread);
    if (!misread.isEmpty())
        m_notice->showNotice(u"No todo el archivo se ha podido leer como está escrito."_s,
                             u"Ver &qué"_s, [this] { m_docks->openProblems(); });
    return true;
}

void frmEditor::recover(const UnsavedWork& work) { m_document->recover(work); }

bool frmEditor::mayClose()
{
    if (m_dialogs.isAsking())
        return false;
    if (!m_document->isModified())
        return true;
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
    return m_files->mayLose();
}

void frmEditor::closeNow()
{
    m_mayClose = true;
    close();
}

void frmEditor::closeEvent(QCloseEvent* event)
{
    if (!m_mayClose && !mayClose())
        return event->ignore();
    emit closed();
}

void frmEditor::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        noticeChangeOutside();
}

void frmEditor::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls() && !m_dialogs.isAsking())
        event->acceptProposedAction();
}

void frmEditor::dropEvent(QDropEvent* event)
{
    QStringList paths;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    event->acceptProposedAction();
    emit filesDropped(paths);
}

void frmEditor::noticeChangeOutside()
{
    if (m_isChangeOutsideTold || !m_document->isChangedOutside())
        return;
    m_isChangeOutsideTold = true;
    m_notice->showNotice(u"Otro programa ha cambiado el archivo \"%1\"."_s.arg(m_document->name()),
                         u"Abrir de &nuevo"_s, [this] { openAgain(); });
}

void frmEditor::openAgain()
{
    const bool isAgreed =
        !m_document->isModified() ||
        m_dialogs.choose(Dialogs::Icon::Warning, editorTitle(),
                         u"Si se abre de nuevo \"%1\", se pierden los cambios que no se han "
                         "guardado."_s.arg(m_document->name()),
                         {u"&Abrir de nuevo"_s, u"&Cancelar"_s}) == 0;
    if (isAgreed)
        open(m_document->path(), m_document->model());
}

void frmEditor::save(bool (DocumentFiles::*how)())
{
    if (!(m_files->*how)())
        return;
    showMessage(u"Guardado en %1."_s.arg(m_document->path()));
    const QStringList losses =
        ModelChange::lossesInFile(m_document->programme(), m_document->model());
    if (!losses.isEmpty())
        m_notice->showNotice(u"Guardado, pero el archivo no puede llevar todo.\n"_s +
                                 losses.join(u'\n'),
                             u"Ver &qué"_s, [this] { m_docks->openProblems(); });
}

QString frmEditor::sheetTitle() const { return m_pages->sheetTitle(); }

void frmEditor::setSheetTitle(const QString& title) { m_pages->setSheetTitle(title); }

void frmEditor::showMessage(const QString& text)
{
    constexpr int shownFor = 8000;
    statusBar()->showMessage(text, shownFor);
}

void frmEditor::showFile()
{
    m_isChangeOutsideTold = false;
    m_notice->hide();
    m_docks->setReadingProblems({});
    setWindowTitle(u"%1[*] - %2"_s.arg(m_document->name(), editorTitle()));
    setWindowFilePath(m_document->path());
    setWindowModified(m_document->isModified());
}

void frmEditor::showState()
{
    // Another model has other rows.
    showSelection();
    m_modelLabel->setText(ProgrammeTexts::modelName(m_document->model()));
    const ProgrammeMarks marks(m_document->programme(), m_document->model());
    m_problemCount->setText(marks.countText());
    m_problemCount->setIcon(marks.count() > 0 ? RowNumber::markIcon(palette()) : QIcon());
    m_menus->update();
}

void frmEditor::undo()
{
    QUndoStack& steps = m_document->undoStack();
    step(u"Deshecho: %1"_s.arg(steps.undoText()), [&steps] { steps.undo(); });
}

void frmEditor::redo()
{
    QUndoStack& steps = m_document->undoStack();
    step(u"Rehecho: %1"_s.arg(steps.redoText()), [&steps] { steps.redo(); });
}

void frmEditor::step(const QString& done, const std::function<void()>& run)
{
    const Programme before = m_document->programme();
    run();
    const auto changed = changedPlace(before, m_document->programme());
    const int tab = !changed             ? m_pages->currentTab()
                    : changed->block < 0 ? ProgrammePages::holidayTab
                                         : changed->block;
    // What is in sight needs no other page, and the focus stays where it is.
    const bool isInSight =
        tab == m_pages->currentTab() ||
        (m_pages->currentTab() == ProgrammePages::weekTab && tab < ProgrammePages::holidayTab);
    if (!isInSight)
        goTo(*changed);
    showMessage(done);
}

void frmEditor::goTo(const RowList::Target& target)
{
    if (target.row >= 0)
        m_pages->goTo(target.place, target.block, target.row);
    else
        m_pages->showTab(target.block >= 0 ? target.block : ProgrammePages::holidayTab);
}

void frmEditor::changeModel(ClockModel model)
{
    const QStringList losses = ModelChange::losses(m_document->programme(), model);
    const bool isAgreed =
        losses.isEmpty() ||
        m_dialogs.choose(
            Dialogs::Icon::Warning, editorTitle(),
            u"Al cambiar al %1:\n\n%2"_s.arg(ProgrammeTexts::modelName(model), losses.join(u'\n')),
            {u"Ca&mbiar"_s, u"&Cancelar"_s}) == 0;
    if (isAgreed)
        m_document->changeModel(model);
    growToPages();
    m_menus->update();
}

void frmEditor::compare()
{
    FileRequest request;
    request.title = u"Comparar con"_s;
    request.filters = {u"Programas (*.hct)"_s, u"Todos los archivos (*.*)"_s};
    request.defaultExtension = u"hct"_s;
    request.directory = m_document->folder();
    const QString path = m_dialogs.openFile(request);
    if (path.isEmpty())
        return;
    ProgrammeDocument other(m_document->model());
    const ProgrammeDocument::OpenResult result = other.open(path, m_document->model());
    if (result.isOpen())
        m_docks->compareWith(other.name(), other.programme(), result.problems);
    else
        m_dialogs.tell(Dialogs::Icon::Critical, editorTitle(), result.failure);
}

void frmEditor::showAbout()
{
    m_dialogs.tell(Dialogs::Icon::Information, editorTitle(),
                   u"Editor de programas HCT %1\n\nPrepara los programas de los relojes HCT-7200 "
                   "y HCT-7300 sin tener un reloj. El programa de control los envía."_s.arg(
                       QCoreApplication::applicationVersion()));
}
