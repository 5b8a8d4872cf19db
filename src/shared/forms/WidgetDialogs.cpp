#include "WidgetDialogs.h"

#include "modGlobais.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The active window. When another program is active, the main window, so that the box does not
/// appear behind it.
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

// Some texts have CR LF at line ends; a box would show a blank for each CR.
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

// On the heap, with a QPointer: the owner may be deleted with the box while the box is open.
QPointer<QMessageBox> makeBox(Dialogs::Icon icon, const QString& title, const QString& text)
{
    QPointer<QMessageBox> box = new QMessageBox(owner());
    box->setIcon(toolkitIcon(icon));
    box->setWindowTitle(titleOr(title));
    box->setTextFormat(Qt::PlainText);
    box->setText(plainLines(text));
    return box;
}

// "Todos los archivos (*.*)" keeps its caption, but in the toolkit "*.*" hides names without a dot.
// So the patterns are appended in brackets: only those count, and they are not shown.
QStringList toolkitFilters(const QStringList& filters)
{
    static const QRegularExpression patterns(u"\\([^()]*\\)$"_s);
    QStringList presented;
    for (const QString& filter : filters)
        presented.append(filter + patterns.match(filter).captured().replace(u"*.*"_s, u"*"_s));
    return presented;
}

/// Opens the file with exactly the name chosen or typed. Only if there is none, it tries the name
/// with the default extension, which the toolkit would append to every name without one.
///
/// Without Q_OBJECT: the toolkit shows the system's dialog only for its own class name.
class OpenDialog final : public QFileDialog {
public:
    OpenDialog(QWidget* parent, const QString& title, const QString& extension)
        : QFileDialog(parent, title), m_extension(extension)
    {
        setAcceptMode(AcceptOpen);
        setFileMode(ExistingFile);
        if (const auto* name = findChild<QLineEdit*>(u"fileNameEdit"_s))
            connect(name, &QLineEdit::textChanged, this, &OpenDialog::offerToOpen);
        else
            // The system's dialog checks both names itself.
            setDefaultSuffix(m_extension);
    }

    void accept() override
    {
        setDefaultSuffix(QString());
        if (needsExtension())
            setDefaultSuffix(m_extension);
        QFileDialog::accept();
    }

private:
    // The toolkit's own handling ignores the default extension and files that the filter hides.
    void offerToOpen()
    {
        if (namesFile() || needsExtension())
            findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->setEnabled(true);
    }
    bool namesFile() const { return QFileInfo(selectedFiles().value(0)).isFile(); }
    bool needsExtension()
    {
        if (QFileInfo::exists(selectedFiles().value(0)))
            return false;
        setDefaultSuffix(m_extension);
        const bool found = namesFile();
        setDefaultSuffix(QString());
        return found;
    }

    QString m_extension;
};

// The toolkit's dialog gives the caption, that of the system the whole filter.
int chosenFilter(const QFileDialog& dialog, const QStringList& captions)
{
    const QString chosen = dialog.selectedNameFilter();
    const qsizetype index =
        std::max(captions.indexOf(chosen), toolkitFilters(captions).indexOf(chosen));
    return static_cast<int>(std::max<qsizetype>(index, 0));
}

ChosenFile chooseFile(const QPointer<QFileDialog>& dialog, const FileRequest& request)
{
    const QStringList filters = toolkitFilters(request.filters);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    if (!filters.isEmpty())
        dialog->setNameFilters(filters);
    if (request.filter > 0)
        dialog->selectNameFilter(filters.value(request.filter));
    if (!request.directory.isEmpty())
        dialog->setDirectory(request.directory);
    if (!request.fileName.isEmpty())
        dialog->selectFile(request.fileName);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    ChosenFile chosen;
    if (dialog && accepted)
        chosen = {dialog->selectedFiles().value(0), chosenFilter(*dialog, request.filters)};
    delete dialog;
    return chosen;
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
    return openFileByFilter(request).path;
}

ChosenFile WidgetDialogs::openFileByFilter(const FileRequest& request)
{
    return chooseFile(new OpenDialog(owner(), titleOr(request.title), request.defaultExtension),
                      request);
}

QString WidgetDialogs::saveFile(const FileRequest& request)
{
    auto* dialog = new QFileDialog(owner(), titleOr(request.title));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setDefaultSuffix(request.defaultExtension);
    return chooseFile(dialog, request).path;
}

int WidgetDialogs::choose(Icon icon, const QString& title, const QString& text,
                          const QStringList& buttons)
{
    const QPointer<QMessageBox> box = makeBox(icon, title, text);
    QList<QAbstractButton*> made;
    for (const QString& caption : buttons)
        made.append(box->addButton(caption, QMessageBox::ActionRole));
    box->setDefaultButton(static_cast<QPushButton*>(made.first()));
    box->setEscapeButton(made.last());
    box->exec();
    const qsizetype pressed = box ? made.indexOf(box->clickedButton()) : -1;
    delete box;
    return static_cast<int>(pressed < 0 ? made.size() - 1 : pressed);
}
