#include "frmProg.h"

#include "AlarmGrid.h"
#include "BlockHeader.h"
#include "FollowingScroll.h"
#include "HolidayEditor.h"
#include "ProgrammeFile.h"
#include "ProgrammeMessages.h"
#include "ProgrammeRules.h"
#include "StatusBlock.h"
#include "StatusLog.h"
#include "WidgetDescription.h"
#include "modGlobais.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QTabBar>

using namespace Qt::StringLiterals;

namespace {

constexpr int holidayTab = Programme::blockCount;

} // namespace

frmProg::frmProg(const Texts& texts, ClockModel model, QWidget* owner, frmCrono& crono,
                 MessageLink& link, modGlobais& globais, StatusLog& log, Dialogs& dialogs)
    : QDialog(owner),
      m_texts(texts),
      m_model(model),
      m_globais(globais),
      m_log(log),
      m_dialogs(dialogs),
      m_exchange({crono, link, globais, log}, model, m_programme,
                 [this] { return fraCadroFestVacac->table(); })
{
    build();
    connect(&m_exchange, &ProgrammeExchange::holidaysRead, this, &frmProg::takeHolidays);
    connect(&m_exchange, &ProgrammeExchange::sent, this, &frmProg::accept);
    connect(&m_exchange, &ProgrammeExchange::failed, this, &frmProg::tellFailure);

    ProgrammeMessages::LoadBlocksFromStatusBlock(m_programme, StatusBlock(m_globais.GeneralData),
                                                 m_model);
    ShowBlock(0);
    showTab(0);
    resize(startSize());
    connect(tabPrincipal, &QTabBar::currentChanged, this, [this](int index) {
        StoreBlockFromControls(m_shownBlock);
        if (index != holidayTab)
            ShowBlock(index);
        showTab(index);
    });
    lock();
    m_exchange.readHolidays();
}

void frmProg::done(int result)
{
    if (m_closed)
        return;
    m_closed = true;
    m_exchange.stop();
    QDialog::done(result);
    // While one of its own boxes is open the window must exist; `ask` deletes it afterwards.
    if (m_boxesUp == 0)
        deleteLater();
}

void frmProg::keyPressEvent(QKeyEvent* event)
{
    const bool cancels = event->matches(QKeySequence::Cancel);
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // A key that is held down must not press the button that its first press gave the focus.
    if ((cancels || isEnter) && event->isAutoRepeat())
        return;
    // One Escape too many must not lose what was entered: the first gives Cancelar the focus, the
    // second closes the window.
    if (cancels && !cmdCancelar->hasFocus())
        return cmdCancelar->setFocus();
    if (!isEnter)
        return QDialog::keyPressEvent(event);
    // There is no default button: Enter in a field must neither send nor open anything.
    if (auto* button = qobject_cast<QPushButton*>(focusWidget()))
        button->click();
    else if (!fraAviso->hasFocus())
        focusNextChild();
}

void frmProg::build()
{
    setWindowTitle(m_texts.caption);
    tabPrincipal = new QTabBar(this);
    tabPrincipal->setObjectName(u"tabPrincipal"_s);
    tabPrincipal->setAccessibleName(u"Apartados de la configuración"_s);
    tabPrincipal->setExpanding(false);
    for (const QString& caption :
         {u"Avisos &1"_s, u"Avisos &2"_s, u"Avisos &3"_s, u"&Festivos y vacaciones"_s})
        tabPrincipal->addTab(caption);
    addTabShortcut(QKeySequence(Qt::CTRL | Qt::Key_PageDown), 1);
    addTabShortcut(QKeySequence(Qt::CTRL | Qt::Key_PageUp), -1);

    fraEnvolvente = new QFrame(this);
    fraEnvolvente->setObjectName(u"fraEnvolvente"_s);
    fraCadroFestVacac = new HolidayEditor(fraEnvolvente);
    auto* inner = new QVBoxLayout(fraEnvolvente);
    inner->setContentsMargins(0, 0, 0, 0);
    inner->addWidget(makeBlockFrame());
    inner->addWidget(fraCadroFestVacac);

    // Both in one cell, so that the window keeps its size when one replaces the other.
    auto* area = new QGridLayout;
    area->addWidget(fraEnvolvente, 0, 0);
    area->addWidget(makeNotice(), 0, 0, Qt::AlignCenter);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabPrincipal);
    layout->addLayout(area, 1);
    layout->addLayout(makeButtons());
}

QFrame* frmProg::makeBlockFrame()
{
    fraCadroAvisos = new QFrame(fraEnvolvente);
    fraCadroAvisos->setObjectName(u"fraCadroAvisos"_s);
    m_header = BlockHeader::make(m_model, fraCadroAvisos);
    m_grid = new AlarmGrid(m_model);
    auto* scroll = new FollowingScroll(*m_grid, fraCadroAvisos);
    scroll->setHeader(m_grid->captions());
    auto* keys = new QLabel(u"Tab: campo siguiente   Intro: aviso siguiente   Espacio: marcar el "
                            "día   Ctrl+D: repetir los días del aviso anterior"_s,
                            fraCadroAvisos);
    keys->setWordWrap(true);
    keys->setForegroundRole(QPalette::PlaceholderText);
    auto* layout = new QVBoxLayout(fraCadroAvisos);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_header);
    layout->addWidget(scroll, 1);
    layout->addWidget(keys);
    return fraCadroAvisos;
}

QGroupBox* frmProg::makeNotice()
{
    fraAviso = new QGroupBox(u"Aviso"_s, this);
    fraAviso->setObjectName(u"fraAviso"_s);
    fraAviso->setFocusPolicy(Qt::TabFocus);
    fraAviso->setAccessibleName(fraAviso->title());
    auto* text = new QLabel(
        u"Espere unos instantes mientras se procede a la lectura o escritura de la configuración "
        "del equipo. Si el proceso dura varios segundos haga clic en el botón Cancelar y verifique "
        "el estado correcto de la conexión con el %1."_s.arg(m_texts.clock),
        fraAviso);
    fraAviso->setAccessibleDescription(text->text());
    text->setWordWrap(true);
    text->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    auto* layout = new QVBoxLayout(fraAviso);
    layout->addWidget(text);
    return fraAviso;
}

QHBoxLayout* frmProg::makeButtons()
{
    cmdAbrir = addButton(
        u"cmdAbrir"_s, u"&Abrir archivo..."_s,
        u"Permite leer de un archivo del disco los datos de configuración y los presenta en la "
        "ventana"_s,
        &frmProg::openFile);
    cmdGardar = addButton(
        u"cmdGardar"_s, u"&Guardar como..."_s,
        u"Permite almacenar en un archivo la configuración que se está visualizando en la ventana "
        "(excepto clave)"_s,
        &frmProg::saveFile);
    cmdBorrar =
        addButton(u"cmdBorrar"_s, u"&Borrar todo"_s,
                  u"Pone todos los valores en la ventana a su valor predeterminado de fábrica"_s,
                  &frmProg::clearAll);
    cmdEnviar = addButton(
        u"cmdEnviar"_s, u"&Enviar"_s,
        u"Envía la configuración que aparece en todos los apartados y cierra la ventana"_s,
        &frmProg::sendAll);
    cmdCancelar =
        addButton(u"cmdCancelar"_s, u"&Cancelar"_s,
                  u"Sale sin cambiar la configuración almacenada en el equipo"_s, &frmProg::reject);
    auto* row = new QHBoxLayout;
    for (QPushButton* button : {cmdAbrir, cmdGardar, cmdBorrar})
        row->addWidget(button);
    row->addStretch();
    for (QPushButton* button : {cmdEnviar, cmdCancelar})
        row->addWidget(button);
    return row;
}

QPushButton* frmProg::addButton(const QString& name, const QString& caption, const QString& hint,
                                void (frmProg::*action)())
{
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    setHint(*button, hint);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, action);
    return button;
}

void frmProg::addTabShortcut(const QKeySequence& keys, int by)
{
    auto* shortcut = new QShortcut(keys, this);
    connect(shortcut, &QShortcut::activated, this, [this, by] {
        if (tabPrincipal->isEnabled())
            tabPrincipal->setCurrentIndex(tabPrincipal->currentIndex() + by);
    });
}

QSize frmProg::startSize() const
{
    // By itself a window gets two thirds of the screen at most; this one needs more.
    QSize size = sizeHint();
    if (const QScreen* on = screen()) {
        const QSize most = on->availableSize() * 0.94;
        // Rows that must be scrolled leave less room for the columns.
        if (size.height() > most.height())
            size.rwidth() += style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
        size = size.boundedTo(most);
    }
    return size;
}

void frmProg::StoreBlockFromControls(int number)
{
    m_grid->storeAlarms(block(number));
    m_header->storeBlock(block(number));
}

void frmProg::ShowBlock(int number)
{
    m_shownBlock = number;
    m_header->setBlock(block(number), number, StatusBlock(m_globais.GeneralData).blockMode(number));
    m_grid->setAlarms(block(number));
}

void frmProg::showTab(int index)
{
    // If the tab bar has the focus it keeps it, for those who change tabs by keyboard; otherwise
    // the first field gets it.
    const bool keepsFocus = tabPrincipal->hasFocus();
    fraCadroFestVacac->setVisible(index == holidayTab);
    fraCadroAvisos->setVisible(index != holidayTab);
    if (keepsFocus)
        return tabPrincipal->setFocus();
    if (index == holidayTab)
        fraCadroFestVacac->focusFirst();
    else
        m_grid->focusRow(0);
}

void frmProg::openFile()
{
    FileRequest request = fileRequest();
    request.title = u"Seleccione un archivo de configuración de "_s + m_texts.fileKind;
    QString path;
    if (ask([&] { path = m_dialogs.openFile(request); }) && !path.isEmpty())
        LoadProgramme(path);
}

void frmProg::saveFile()
{
    FileRequest request = fileRequest();
    request.title = u"Guardar configuración de %1 como..."_s.arg(m_texts.fileKind);
    QString path;
    if (ask([&] { path = m_dialogs.saveFile(request); }) && !path.isEmpty())
        SaveProgramme(path);
}

FileRequest frmProg::fileRequest() const
{
    FileRequest request;
    request.filters = {u"Datos de configuración %1 (*.hct)"_s.arg(m_texts.fileKind),
                       u"Todos los archivos (*.*)"_s};
    // Different from the extension of the filter. This is intentional.
    request.defaultExtension = u"sca"_s;
    return request;
}

void frmProg::SaveProgramme(const QString& path)
{
    StoreBlockFromControls(m_shownBlock);
    m_programme.table = fraCadroFestVacac->table();
    if (!ProgrammeFile::save(path, m_programme, m_model))
        m_log.Rexistra(u"No se ha podido guardar el archivo "_s + path, false);
}

void frmProg::LoadProgramme(const QString& path)
{
    // Values that the file lacks stay as they are on screen, so store those first. The mode of the
    // HCT-7200 stays as the clock has it, so the header is not stored.
    m_grid->storeAlarms(block(m_shownBlock));
    if (m_model == ClockModel::Hct7300)
        m_header->storeBlock(block(m_shownBlock));
    m_programme.table = fraCadroFestVacac->table();
    if (!ProgrammeFile::load(path, m_programme, m_model))
        m_log.Rexistra(u"No se ha podido leer el archivo "_s + path, false);
    fraCadroFestVacac->setTable(m_programme.table);
    ShowBlock(m_shownBlock);
}

void frmProg::clearAll()
{
    m_programme = Programme();
    fraCadroFestVacac->setTable(m_programme.table);
    ShowBlock(m_shownBlock);
}

void frmProg::sendAll()
{
    StoreBlockFromControls(m_shownBlock);
    if (!ValidateProgramme())
        return;
    lock();
    ProgrammeRules::NormaliseProgramme(m_programme);
    m_exchange.send();
}

bool frmProg::ValidateProgramme()
{
    const auto violation = ProgrammeRules::firstViolation(m_programme, m_model);
    if (!violation)
        return true;
    const bool clash = violation->kind == ProgrammeRules::Violation::Kind::Clash;
    if (clash)
        tabPrincipal->setCurrentIndex(violation->block);
    const QString title = clash ? u"Error"_s : QString();
    const bool here = ask([&] { m_dialogs.tell(Dialogs::Icon::Critical, title, violation->text); });
    if (here && clash)
        m_grid->focusRow(violation->alarm);
    return false;
}

void frmProg::lock()
{
    m_focusBeforeLock = focusWidget();
    fraAviso->show();
    // No key has an effect there, and a screen reader reads the notice.
    fraAviso->setFocus();
    tabPrincipal->setEnabled(false);
    fraEnvolvente->hide();
    for (QPushButton* button : {cmdEnviar, cmdBorrar, cmdAbrir, cmdGardar})
        button->setEnabled(false);
}

void frmProg::restore()
{
    tabPrincipal->setEnabled(true);
    fraAviso->hide();
    fraEnvolvente->show();
    for (QPushButton* button : {cmdEnviar, cmdBorrar, cmdAbrir, cmdGardar})
        button->setEnabled(true);
    if (m_focusBeforeLock && m_focusBeforeLock != cmdCancelar)
        m_focusBeforeLock->setFocus();
    else
        m_grid->focusRow(0);
}

void frmProg::takeHolidays(const HolidayTable& table)
{
    fraCadroFestVacac->setTable(table);
    restore();
}

void frmProg::tellFailure()
{
    restore();
    ask([this] {
        m_dialogs.tell(Dialogs::Icon::Critical, QString(),
                       u"No se ha podido realizar la configuración del equipo.\r\n"
                       "Verifique el estado de las conexiones e inténtelo de nuevo."_s);
    });
}

bool frmProg::ask(const std::function<void()>& box)
{
    const QPointer<frmProg> self(this);
    ++m_boxesUp;
    box();
    if (!self)
        return false;
    --m_boxesUp;
    if (m_closed && m_boxesUp == 0)
        deleteLater();
    return !m_closed;
}

frmProgHCT7200::frmProgHCT7200(QWidget* owner, frmCrono& crono, MessageLink& link,
                               modGlobais& globais, StatusLog& log, Dialogs& dialogs)
    // The two blanks in this caption, and in that of the other model, are intentional.
    : frmProg({u"Configuración del  HCT-7200"_s, u"HCT-7200"_s, u"HCT-7200"_s}, ClockModel::Hct7200,
              owner, crono, link, globais, log, dialogs)
{
    setObjectName(u"frmProgHCT7200"_s);
}

frmProgHCT7300::frmProgHCT7300(QWidget* owner, frmCrono& crono, MessageLink& link,
                               modGlobais& globais, StatusLog& log, Dialogs& dialogs)
    // The notice of a running exchange and the caption name this model; the file dialogs say only
    // HCT. This is intentional.
    : frmProg({u"Configuración del  HCT-7300"_s, u"HCT-7300"_s, u"HCT"_s}, ClockModel::Hct7300,
              owner, crono, link, globais, log, dialogs)
{
    setObjectName(u"frmProgHCT7300"_s);
}
