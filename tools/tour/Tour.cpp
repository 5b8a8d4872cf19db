#include "Tour.h"

#include "LogText.h"
#include "RoundLamp.h"
#include "frmPrincipal.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTabBar>
#include <QTimer>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// Longer than a call by modem and three further attempts to identify.
constexpr int patience = 60000;

/// Lets events run until `condition` holds; false when it never did.
bool waitUntil(const std::function<bool()>& condition, int milliseconds)
{
    QEventLoop loop;
    QTimer check;
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&check, &QTimer::timeout, &loop, [&] {
        if (condition())
            loop.quit();
    });
    QObject::connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
    check.start(20);
    limit.start(milliseconds);
    loop.exec();
    return condition();
}

/// Waits until a window has been painted and its first answers have arrived.
void settle()
{
    waitUntil([] { return false; }, 1500);
}

QString labelText(const QWidget& window, const QString& name)
{
    const auto* label = window.findChild<QLabel*>(name);
    return label ? label->text().trimmed() : QString();
}

} // namespace

Tour::Tour(frmPrincipal& mainWindow) : m_mainWindow(mainWindow) {}

QAction* Tour::action(const QString& name) const
{
    auto* found = m_mainWindow.findChild<QAction*>(name);
    return found && found->isEnabled() && found->isVisible() ? found : nullptr;
}

QWidget* Tour::openForm() const
{
    const auto* area = m_mainWindow.findChild<QMdiArea*>();
    const QMdiSubWindow* frame = area ? area->activeSubWindow() : nullptr;
    return frame ? frame->widget() : nullptr;
}

QString Tour::panel(int number) const
{
    return labelText(m_mainWindow, u"stbBarra(%1)"_s.arg(number));
}

bool Tour::connectToClock(bool throughModem)
{
    QAction* modem = action(u"mnuUsarModem"_s);
    if (modem && modem->isChecked() != throughModem)
        modem->trigger();
    QAction* begin = action(u"mnuConectar"_s);
    if (!begin)
        return false;
    begin->trigger();
    // The log ends with this line when the clock has not identified itself.
    const auto decided = [this] {
        return panel(1) == "Conectado"_L1 || log().constLast().endsWith(u"Conexión interrumpida"_s);
    };
    return waitUntil(decided, patience) && panel(1) == "Conectado"_L1;
}

QStringList Tour::readClock()
{
    QAction* information = action(u"mnuInformacion"_s);
    if (!information)
        return {};
    information->trigger();
    const QWidget* form = openForm();
    if (!form)
        return {};
    const QString designDate = labelText(*form, u"lblData"_s);
    if (!waitUntil([&] { return labelText(*form, u"lblData"_s) != designDate; }, patience))
        return {};
    QStringList values{panel(2), u"Puerto: "_s + panel(3),
                       u"Fecha: "_s + labelText(*form, u"lblData"_s),
                       u"Hora: "_s + labelText(*form, u"lblHora"_s)};
    for (const RoundLamp* lamp : form->findChildren<RoundLamp*>())
        values += lamp->accessibleName().remove(u':') + u": "_s + lamp->accessibleDescription();
    return values;
}

QStringList Tour::log() const
{
    const auto* text = m_mainWindow.findChild<LogText*>(u"txtRexistro"_s);
    return text ? text->toPlainText().trimmed().split(u'\n') : QStringList(QString());
}

bool Tour::savePicture(const QString& path) { return m_mainWindow.grab().save(path); }

bool Tour::savePictures(const QDir& folder)
{
    bool good = savePicture(folder.filePath(u"frmPrincipal.png"_s));
    for (const QString& entry : {u"mnuRexistro"_s, u"mnuInformacion"_s,
                                 u"mnuSincronizacionReloxo"_s, u"mnuTelemando"_s, u"mnuFirmware"_s})
        good = pictureOfForm(entry, folder) && good;
    good = picturesOfDialog(u"mnuProgramacion"_s, folder) && good;
    good = picturesOfDialog(u"mnuAcerca"_s, folder) && good;
    if (QAction* end = action(u"mnuDesconectar"_s))
        end->trigger();
    return picturesOfDialog(u"mnuConfiguracion"_s, folder) && good;
}

bool Tour::pictureOfForm(const QString& entry, const QDir& folder)
{
    QAction* open = action(entry);
    if (!open)
        return false;
    open->trigger();
    settle();
    QWidget* form = openForm();
    if (!form)
        return false;
    return form->grab().save(folder.filePath(form->objectName() + u".png"_s));
}

/// Choosing the entry of a modal window may not return until it is closed, so a timer takes the
/// pictures.
bool Tour::picturesOfDialog(const QString& entry, const QDir& folder)
{
    QAction* open = action(entry);
    if (!open)
        return false;
    bool saved = false;
    QTimer::singleShot(0, this, [&] {
        settle();
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog)
            return;
        const auto save = [&](const QString& suffix) {
            saved = dialog->grab().save(folder.filePath(dialog->objectName() + suffix + u".png"_s));
        };
        save(QString());
        auto* tabs = dialog->findChild<QTabBar*>();
        for (int tab = 1; tabs && tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            settle();
            save(u"-%1"_s.arg(tab + 1));
        }
        dialog->close();
    });
    open->trigger();
    waitUntil([] { return QApplication::activeModalWidget() == nullptr; }, patience);
    return saved;
}
