#include "EditorMenus.h"

#include "AlarmGrid.h"
#include "EditorDocks.h"
#include "EditorToolBar.h"
#include "ProgrammeDocument.h"
#include "ProgrammePages.h"
#include "ProgrammeTexts.h"
#include "RowCommands.h"
#include "WallPrinting.h"

#include <QActionGroup>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenuBar>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array models{ClockModel::Hct7200, ClockModel::Hct7300};

/// With the digit as access key in which the names differ: "HCT-7&200".
QString captionOf(ClockModel model)
{
    QString name = ProgrammeTexts::modelName(model);
    return name.insert(name.size() - 3, u'&');
}

} // namespace

EditorMenus::EditorMenus(QMainWindow& window, const Parts& parts)
    : QObject(&window), m_window(window), m_parts(parts)
{
    makeFile();
    makeEdit();
    makeView();
    makeHelp();
    makeToolBar();
    connect(&parts.pages, &ProgrammePages::tabChanged, this, &EditorMenus::update);
    connect(&parts.pages, &ProgrammePages::rowMenuRequested, this, &EditorMenus::openRowMenu);
}

QAction* EditorMenus::add(QMenu& menu, const QString& name, const QString& text,
                          const QList<QKeySequence>& keys, const std::function<void()>& run)
{
    QAction* action = menu.addAction(text);
    action->setObjectName(name);
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, run);
    return action;
}

QAction* EditorMenus::addForRows(const QString& name, const QString& text,
                                 const QList<QKeySequence>& keys, const std::function<void()>& run)
{
    m_forRows.append(add(*m_edit, name, text, keys, run));
    return m_forRows.last();
}

void EditorMenus::makeFile()
{
    QMenu& menu = *m_window.menuBar()->addMenu(u"&Archivo"_s);
    QMenu& newMenu = *menu.addMenu(u"&Nuevo"_s);
    m_new = new QAction(this);
    m_new->setObjectName(u"mnuNuevo"_s);
    connect(m_new, &QAction::triggered, this,
            [this] { emit newRequested(m_parts.document.model()); });
    for (const ClockModel model : models)
        m_newFor.append(add(newMenu, u"mnuNuevo"_s + ProgrammeTexts::modelName(model),
                            u"Para el "_s + captionOf(model), {},
                            [this, model] { emit newRequested(model); }));
    add(menu, u"mnuAbrir"_s, u"&Abrir..."_s, QKeySequence::keyBindings(QKeySequence::Open),
        [this] { emit openRequested(); });
    QMenu& recent = *menu.addMenu(u"Abrir &reciente"_s);
    recent.setObjectName(u"mnuReciente"_s);
    connect(&recent, &QMenu::aboutToShow, this, [this, &recent] {
        recent.clear();
        emit recentMenuOpened(recent);
    });
    menu.addSeparator();
    add(menu, u"mnuGuardar"_s, u"&Guardar"_s, QKeySequence::keyBindings(QKeySequence::Save),
        [this] { emit saveRequested(); });
    add(menu, u"mnuGuardarComo"_s, u"G&uardar como..."_s, {Qt::CTRL | Qt::SHIFT | Qt::Key_S},
        [this] { emit saveAsRequested(); });
    add(menu, u"mnuComparar"_s, u"Co&mparar con otro archivo..."_s, {},
        [this] { emit compareRequested(); });
    menu.addSeparator();
    add(menu, u"mnuVistaPrevia"_s, u"&Vista previa..."_s, {}, [this] { m_parts.paper.preview(); });
    add(menu, u"mnuImprimir"_s, u"&Imprimir..."_s, QKeySequence::keyBindings(QKeySequence::Print),
        [this] { m_parts.paper.print(); });
    add(menu, u"mnuPdf"_s, u"Guardar como &PDF..."_s, {}, [this] { m_parts.paper.savePdf(); });
    menu.addSeparator();
    add(menu, u"mnuCerrar"_s, u"&Cerrar"_s, {Qt::CTRL | Qt::Key_W}, [this] { m_window.close(); });
    add(menu, u"mnuSalir"_s, u"&Salir"_s, {Qt::CTRL | Qt::Key_Q}, [this] { emit quitRequested(); });
}

void EditorMenus::makeEdit()
{
    RowCommands& rows = m_parts.rows;
    m_edit = m_window.menuBar()->addMenu(u"&Edición"_s);
    m_undo = add(*m_edit, u"mnuDeshacer"_s, {}, {Qt::CTRL | Qt::Key_Z},
                 [this] { emit undoRequested(); });
    m_redo =
        add(*m_edit, u"mnuRehacer"_s, {}, {Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z},
            [this] { emit redoRequested(); });
    m_edit->addSeparator();
    addForRows(u"mnuCortar"_s, u"Cor&tar avisos"_s, {Qt::CTRL | Qt::Key_X},
               [&rows] { rows.cut(); });
    addForRows(u"mnuCopiar"_s, u"&Copiar avisos"_s, {Qt::CTRL | Qt::Key_C},
               [&rows] { rows.copy(); });
    addForRows(u"mnuPegar"_s, u"&Pegar avisos"_s, {Qt::CTRL | Qt::Key_V},
               [&rows] { rows.paste(); });
    addForRows(u"mnuInsertar"_s, u"&Insertar avisos copiados"_s, {Qt::CTRL | Qt::SHIFT | Qt::Key_V},
               [&rows] { rows.insert(); });
    addForRows(u"mnuEliminar"_s, u"&Eliminar avisos"_s, {Qt::Key_Delete},
               [&rows] { rows.remove(); });
    addForRows(u"mnuElegirTodos"_s, u"Ele&gir todos"_s, {Qt::CTRL | Qt::Key_A},
               [&rows] { rows.selectAll(); });
    m_edit->addSeparator();
    // Only names the keys, which the grid itself takes.
    addForRows(u"mnuRepetir"_s,
               u"Repetir &los días hacia abajo\t"_s +
                   QKeySequence(Qt::CTRL | Qt::Key_D).toString(QKeySequence::NativeText),
               {}, [&rows] { rows.repeatDays(); });
    addForRows(u"mnuSerie"_s, u"&Serie de avisos..."_s, {Qt::CTRL | Qt::Key_E},
               [&rows] { rows.addSeries(); });
    addForRows(u"mnuOrdenar"_s, u"&Ordenar por hora"_s, {}, [&rows] { rows.sort(); });
    makeCopyTo();
    makeModels();
}

void EditorMenus::makeCopyTo()
{
    m_copyTo = m_edit->addMenu(u"Copiar los avisos &a"_s);
    for (int block = 0; block < Programme::blockCount; ++block)
        add(*m_copyTo, u"mnuCopiarA%1"_s.arg(block + 1), u"Salida &%1"_s.arg(block + 1), {},
            [this, block] { m_parts.rows.copyToOutput(block); });
}

void EditorMenus::makeModels()
{
    m_edit->addSeparator();
    QMenu& menu = *m_edit->addMenu(u"&Modelo del reloj"_s);
    m_models = new QActionGroup(this);
    for (const ClockModel model : models) {
        QAction* action = add(menu, u"mnuModelo"_s + ProgrammeTexts::modelName(model),
                              captionOf(model), {}, [this, model] { emit modelChosen(model); });
        action->setCheckable(true);
        m_models->addAction(action);
    }
}

void EditorMenus::makeView()
{
    m_view = m_window.menuBar()->addMenu(u"&Ver"_s);
    QMenu& menu = *m_view;
    m_tabs = new QActionGroup(this);
    for (int tab = 0; tab < ProgrammePages::tabCount; ++tab) {
        QAction* action = add(menu, u"mnuVer%1"_s.arg(tab + 1),
                              u"&%1 %2"_s.arg(tab + 1).arg(ProgrammePages::tabName(tab)),
                              {QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + tab))},
                              [this, tab] { m_parts.pages.showTab(tab); });
        action->setCheckable(true);
        m_tabs->addAction(action);
    }
    menu.addSeparator();
    QAction* problems = m_parts.docks.problems().toggleViewAction();
    problems->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    menu.addAction(problems);
    menu.addAction(m_parts.docks.comparison().toggleViewAction());
}

void EditorMenus::makeHelp()
{
    QMenu& menu = *m_window.menuBar()->addMenu(u"A&yuda"_s);
    add(menu, u"mnuAcerca"_s, u"&Acerca del editor"_s, {}, [this] { emit aboutRequested(); });
}

void EditorMenus::makeToolBar()
{
    auto* bar = new EditorToolBar(m_window);
    m_window.addToolBar(bar);
    m_view->addAction(bar->toggleViewAction());
}

void EditorMenus::update()
{
    m_new->setText(u"Nuevo para el "_s + ProgrammeTexts::modelName(m_parts.document.model()));
    QUndoStack& steps = m_parts.document.undoStack();
    m_undo->setText((u"&Deshacer "_s + steps.undoText()).trimmed());
    m_undo->setEnabled(steps.canUndo());
    m_redo->setText((u"&Rehacer "_s + steps.redoText()).trimmed());
    m_redo->setEnabled(steps.canRedo());
    const int shown = m_parts.pages.shownBlock();
    for (QAction* action : std::as_const(m_forRows))
        action->setEnabled(shown >= 0);
    m_copyTo->setEnabled(shown >= 0);
    const QList<QAction*> outputs = m_copyTo->actions();
    for (int block = 0; block < outputs.size(); ++block)
        outputs[block]->setEnabled(block != shown);
    m_tabs->actions().at(m_parts.pages.currentTab())->setChecked(true);
    const auto current = m_parts.document.model() == ClockModel::Hct7200 ? 0 : 1;
    m_models->actions().at(current)->setChecked(true);
    for (int index = 0; index < m_newFor.size(); ++index)
        m_newFor[index]->setShortcuts(index == current
                                          ? QKeySequence::keyBindings(QKeySequence::New)
                                          : QList<QKeySequence>());
}

void EditorMenus::openRowMenu(const QPoint& globalPosition)
{
    auto* menu = new QMenu(&m_window);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(m_forRows);
    menu->popup(globalPosition);
}
