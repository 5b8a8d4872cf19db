#include "WidgetDialogs.h"

#include "modGlobais.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// The window in front; while the operator is busy with another program, the main window, so that
/// the box does not come up unseen behind it.
QWidget* owner()
{
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget* active = QApplication::activeWindow())
        return active;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowType() == Qt::Window)
            return window;
    return nullptr;
}

QString titleOr(const QString& title) { return title.isEmpty() ? applicationTitle() : title; }

// Some texts end their lines as the clock's files do; a box would show a blank for each return.
QString plainLines(QString text) { return text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n'); }

QMessageBox::Icon toolkitIcon(Dialogs::Icon icon)
{
    switch (icon) {
    case Dialogs::Icon::Information: return QMessageBox::Information;
    case Dialogs::Icon::Warning: return QMessageBox::Warning;
    case Dialogs::Icon::Critical: return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

// On the heap and watched: the owner may go, and takes the box with it, while the box is up.
QPointer<QMessageBox> makeBox(Dialogs::Icon icon, const QString& title, const QString& text)
{
    QPointer<QMessageBox> box = new QMessageBox(owner());
    box->setIcon(toolkitIcon(icon));
    box->setWindowTitle(titleOr(title));
    box->setTextFormat(Qt::PlainText);
    box->setText(plainLines(text));
    return box;
}

// "Todos los archivos (*.*)" keeps its caption, but here "*.*" would hide what has no dot. So each
// filter tells its patterns once more behind the caption, and only those count and are not shown.
QStringList toolkitFilters(const QStringList& filters)
{
    static const QRegularExpression patterns(u"\\([^()]*\\)$"_s);
    QStringList presented;
    for (const QString& filter : filters)
        presented.append(filter + patterns.match(filter).captured().replace(u"*.*"_s, u"*"_s));
    return presented;
}

QString chooseFile(const FileRequest& request, QFileDialog::AcceptMode mode)
{
    const QPointer<QFileDialog> dialog = new QFileDialog(owner(), titleOr(request.title));
    dialog->setAcceptMode(mode);
    dialog->setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile
                                                        : QFileDialog::AnyFile);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    if (!request.filters.isEmpty())
        dialog->setNameFilters(toolkitFilters(request.filters));
    dialog->setDefaultSuffix(request.defaultExtension);
    if (!request.directory.isEmpty())
        dialog->setDirectory(request.directory);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    const QStringList chosen = dialog && accepted ? dialog->selectedFiles() : QStringList();
    delete dialog;
    return chosen.value(0);
}

} // namespace

void WidgetDialogs::tell(Icon icon, const QString& title, const QString& text)
{
    const QPointer<QMessageBox> box = makeBox(icon, title, text);
    box->addButton(QMessageBox::Ok)->setText(u"&Aceptar"_s);
    box->exec();
    delete box;
}

bool WidgetDialogs::confirm(Icon icon, const QString& title, const QString& text)
{
    const QPointer<QMessageBox> box = makeBox(icon, title, text);
    box->addButton(QMessageBox::Yes)->setText(u"&Sí"_s);
    box->addButton(QMessageBox::No)->setText(u"&No"_s);
    box->setDefaultButton(QMessageBox::No);
    box->setEscapeButton(QMessageBox::No);
    const bool yes = box->exec() == QMessageBox::Yes;
    delete box;
    return yes;
}

std::optional<QString> WidgetDialogs::askText(const QString& title, const QString& prompt)
{
    const QPointer<QInputDialog> dialog = new QInputDialog(owner());
    dialog->setWindowTitle(titleOr(title));
    dialog->setLabelText(plainLines(prompt));
    for (QLabel* label : dialog->findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
    dialog->setOkButtonText(u"&Aceptar"_s);
    dialog->setCancelButtonText(u"&Cancelar"_s);
    std::optional<QString> text;
    if (dialog->exec() == QDialog::Accepted && dialog)
        text = dialog->textValue();
    delete dialog;
    return text;
}

QString WidgetDialogs::openFile(const FileRequest& request)
{
    return chooseFile(request, QFileDialog::AcceptOpen);
}

QString WidgetDialogs::saveFile(const FileRequest& request)
{
    return chooseFile(request, QFileDialog::AcceptSave);
}
