#include "frmSincronizacionReloxo.h"

#include "Dialogs.h"
#include "TextoRestrinxido.h"
#include "WidgetDescription.h"
#include "modGlobais.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

enum DateField { Day, Month, Year };
enum TimeField { Hours, Minutes, Seconds };

QPushButton* makeButton(const QString& name, const QString& caption, const QString& toolTip)
{
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    setHint(*button, toolTip);
    return button;
}

} // namespace

// The field accepts day 31 in every month; ClockSetting::isValidDate judges the whole date.
frmSincronizacionReloxo::frmSincronizacionReloxo(QMdiArea& area, frmCrono& crono, MessageLink& link,
                                                 const modGlobais& globais, StatusLog& log,
                                                 Dialogs& dialogs, const ClockOfDay& clock)
    : MdiForm(area),
      m_setting(link, log, clock),
      m_registration(crono, m_setting, CronoRegistration::everyTick),
      txtData(new TextoRestrinxido({{1, 31, 2}, {1, 12, 2}, {0, 9999, 4}}, u'/')),
      txtHora(new TextoRestrinxido({{0, 23, 2}, {0, 59, 2}, {0, 59, 2}}, u':')),
      cmdEnviar(makeButton(
          u"cmdEnviar"_s, u"&Manual"_s,
          u"Envío de sincronismo \"manual\" de los valores visualizados de fecha y hora"_s)),
      cmdPC(makeButton(u"cmdPC"_s, u"&Automático (PC)"_s,
                       u"Enviar sincronismo \"automático\" con fecha y hora del reloj interno del "
                       "ordenador"_s)),
      cmdPechar(makeButton(u"cmdPechar"_s, u"&Cancelar"_s,
                           u"Cerrar la ventana sin realizar sincronismo"_s))
{
    setObjectName(u"frmSincronizacionReloxo"_s);
    setWindowTitle(u"Sincronización del Reloj"_s);
    describe(*txtData, u"txtData"_s, u"Fecha:"_s, u"Fecha para sincronismo \"manual\""_s);
    describe(*txtHora, u"txtHora"_s, u"Hora:"_s, u"Hora para sincronismo \"manual\""_s);

    auto* column = new QVBoxLayout(this);
    column->addWidget(makeFields());
    column->addStretch();
    column->addWidget(makeButtons());
    connectControls(dialogs);
    showFields(ClockFields::fromBlock(StatusBlock(globais.GeneralData)));
}

void frmSincronizacionReloxo::connectControls(Dialogs& dialogs)
{
    connect(txtData, &TextoRestrinxido::valuesChanged, this, [this] {
        takeFields();
        judgeDate();
    });
    connect(txtHora, &TextoRestrinxido::valuesChanged, this, [this] { takeFields(); });
    connect(cmdEnviar, &QPushButton::clicked, this, [this] { begin(ClockSetting::State::Manual); });
    connect(cmdPC, &QPushButton::clicked, this, [this] { begin(ClockSetting::State::Automatic); });
    connect(cmdPechar, &QPushButton::clicked, this, [this] { closeWindow(CloseReason::Operator); });
    connect(&m_setting, &ClockSetting::accepted, this, [this] { closeWindow(CloseReason::Code); });
    connect(&m_setting, &ClockSetting::gaveUp, this, [this, &dialogs] {
        m_registration.DesactivaCliente();
        dialogs.tell(Dialogs::Icon::Critical, applicationTitle(),
                     u"No se han podido actualizar la fecha y la hora en el equipo.\n"
                     "Compruebe que no se ha interrumpido la comunicación y si lo\n"
                     "desea inténtelo de nuevo."_s);
    });
}

QWidget* frmSincronizacionReloxo::makeFields()
{
    auto* Frame1 = new QGroupBox(u"Datos sincronismo manual"_s);
    Frame1->setObjectName(u"Frame1"_s);
    auto* dateCaption = new QLabel(u"&Fecha:"_s);
    auto* timeCaption = new QLabel(u"&Hora:"_s);
    dateCaption->setBuddy(txtData);
    timeCaption->setBuddy(txtHora);
    auto* row = new QHBoxLayout(Frame1);
    row->addWidget(dateCaption);
    row->addWidget(txtData);
    row->addStretch();
    row->addSpacing(fontMetrics().height());
    row->addWidget(timeCaption);
    row->addWidget(txtHora);
    return Frame1;
}

QWidget* frmSincronizacionReloxo::makeButtons()
{
    auto* buttons = new QWidget;
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins({});
    for (QPushButton* button : {cmdEnviar, cmdPC, cmdPechar})
        row->addWidget(button, 1);
    return buttons;
}

void frmSincronizacionReloxo::showFields(const ClockFields& fields)
{
    txtHora->setValue(Hours, fields.hours);
    txtHora->setValue(Minutes, fields.minutes);
    txtHora->setValue(Seconds, fields.seconds);
    txtData->setValue(Day, fields.day);
    txtData->setValue(Month, fields.month);
    txtData->setValue(Year, fields.year);
    // valuesChanged is not emitted for values that the fields already have.
    takeFields();
    judgeDate();
}

void frmSincronizacionReloxo::takeFields()
{
    m_setting.setFields({txtData->value(Day), txtData->value(Month), txtData->value(Year),
                         txtHora->value(Hours), txtHora->value(Minutes), txtHora->value(Seconds)});
}

void frmSincronizacionReloxo::judgeDate()
{
    const bool isValid =
        ClockSetting::isValidDate(txtData->value(Day), txtData->value(Month), txtData->value(Year));
    txtData->setTextColour(isValid ? QColor() : QColor(255, 0, 0));
    // Screen readers do not read the colour.
    txtData->setAccessibleName(isValid ? u"Fecha:"_s : u"Fecha no válida:"_s);
    cmdEnviar->setEnabled(isValid);
}

void frmSincronizacionReloxo::begin(ClockSetting::State source)
{
    for (QPushButton* button : {cmdEnviar, cmdPC, cmdPechar})
        button->setEnabled(false);
    m_setting.begin(source);
    m_registration.ActivaCliente();
}

void frmSincronizacionReloxo::unload()
{
    m_setting.stop();
    m_registration.EliminaCliente();
}
