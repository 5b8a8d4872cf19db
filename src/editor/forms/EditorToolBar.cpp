#include "EditorToolBar.h"

#include "ActionPicture.h"

#include <QAction>
#include <QMainWindow>

using namespace Qt::StringLiterals;

namespace {

struct Button {
    const char16_t* action;
    ActionPicture picture;
    bool beginsGroup = false;
};

constexpr Button buttons[]{
    {u"mnuNuevo", ActionPicture::New},           {u"mnuAbrir", ActionPicture::Open},
    {u"mnuGuardar", ActionPicture::Save},        {u"mnuImprimir", ActionPicture::Print},
    {u"mnuDeshacer", ActionPicture::Undo, true}, {u"mnuRehacer", ActionPicture::Redo},
    {u"mnuCortar", ActionPicture::Cut, true},    {u"mnuCopiar", ActionPicture::Copy},
    {u"mnuPegar", ActionPicture::Paste},         {u"mnuSerie", ActionPicture::Series, true},
    {u"mnuComparar", ActionPicture::Compare},
};

void showNameAndKeys(QAction& action)
{
    // Without the access key and the dots, as the toolkit names a button.
    QString tip = action.iconText();
    const QString keys = action.shortcut().toString(QKeySequence::NativeText);
    if (!keys.isEmpty())
        tip += u" (%1)"_s.arg(keys);
    action.setToolTip(tip);
}

} // namespace

EditorToolBar::EditorToolBar(QMainWindow& window) : QToolBar(u"&Barra de herramientas"_s, &window)
{
    setObjectName(u"barHerramientas"_s);
    setMovable(false);
    for (const Button& button : buttons) {
        auto* action = window.findChild<QAction*>(QString::fromUtf16(button.action));
        action->setIcon(actionIcon(button.picture));
        // Menus have no pictures: most of their entries would be without.
        action->setIconVisibleInMenu(false);
        connect(action, &QAction::changed, this, [action] { showNameAndKeys(*action); });
        showNameAndKeys(*action);
        if (button.beginsGroup)
            addSeparator();
        addAction(action);
    }
}
