#include "PortsPage.h"

#include "CommSettings.h"
#include "MessageLink.h"
#include "PortNames.h"
#include "SerialPort.h"
#include "WidgetDescription.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>

#include <initializer_list>

using namespace Qt::StringLiterals;

namespace {

constexpr int channelCount = PortNames::highestNumber;

const QStringList& speeds()
{
    static const QStringList all{u"110"_s,   u"300"_s,    u"600"_s,    u"1200"_s,
                                 u"2400"_s,  u"4800"_s,   u"9600"_s,   u"14400"_s,
                                 u"19200"_s, u"28800"_s,  u"38400"_s,  u"56000"_s,
                                 u"57600"_s, u"115200"_s, u"128000"_s, u"256000"_s};
    return all;
}

QStringList channels()
{
    QStringList all;
    for (int number = 1; number <= channelCount; ++number)
        all += u"COM%1"_s.arg(number);
    return all;
}

QComboBox* makeList(const QStringList& items)
{
    auto* list = new QComboBox;
    list->addItems(items);
    return list;
}

/// A control with the caption beside it, which it is the buddy of.
struct Row {
    QString caption;
    QWidget* field;
    QString objectName;
    QString toolTip;
};

/// One row a control, all of them as wide as the frame under every style.
QGroupBox* makeFrame(const QString& title, std::initializer_list<Row> rows)
{
    auto* frame = new QGroupBox(title);
    auto* form = new QFormLayout(frame);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const Row& row : rows) {
        describe(*row.field, row.objectName, row.caption.chopped(1), row.toolTip);
        form->addRow(row.caption, row.field);
    }
    return frame;
}

/// What the list does not hold is shown as its placeholder: in force, but not selected.
void selectText(QComboBox& list, const QString& text)
{
    list.setPlaceholderText(text);
    list.setCurrentIndex(list.findText(text));
}

void storeText(const QComboBox& list, QString& text)
{
    if (list.currentIndex() >= 0)
        text = list.currentText();
}

void storeIndex(const QComboBox& list, QString& text)
{
    if (list.currentIndex() >= 0)
        text = QString::number(list.currentIndex());
}

void showDevices(QComboBox& list, const QStringList& devices, const SerialPort& port)
{
    for (int index = 0; index < list.count(); ++index) {
        QString toolTip = devices.value(index);
        if (toolTip.isEmpty())
            toolTip = u"No hay ningún puerto en este canal"_s;
        if (index + 1 == port.portNumber() && !port.openError().isEmpty())
            toolTip = port.openError();
        list.setItemData(index, literalToolTip(toolTip), Qt::ToolTipRole);
        list.setItemData(index, toolTip, Qt::AccessibleDescriptionRole);
    }
}

/// Comes into focus with its caret at the start.
class InitialisationEdit : public QLineEdit {
protected:
    void focusInEvent(QFocusEvent* event) override
    {
        QLineEdit::focusInEvent(event);
        deselect();
        setCursorPosition(0);
    }
};

} // namespace

PortsPage::PortsPage(const MessageLink& link, const PortNames& names, QWidget* parent)
    : QWidget(parent),
      m_link(link),
      m_names(names),
      cbbCanal(makeList(channels())),
      cbbVelocidade(makeList(speeds())),
      cbbParidade(makeList({u"Ninguna"_s, u"Par"_s, u"Impar"_s, u"Marca"_s, u"Espacio"_s})),
      cbbBits(makeList({u"4"_s, u"5"_s, u"6"_s, u"7"_s, u"8"_s})),
      cbbParo(makeList({u"1"_s, u"1.5"_s, u"2"_s})),
      cbbDTR(makeList({u"Off"_s, u"On"_s})),
      cbbRTS(makeList({u"Off"_s, u"On"_s})),
      cbbCanal2(makeList(channels())),
      cbbVelocidade2(makeList(speeds())),
      txtInicializacion(new InitialisationEdit),
      txtEstacion(new QLineEdit),
      txtIdentificacion(new QLineEdit)
{
    auto* layout = new QVBoxLayout(this);
    auto* columns = new QHBoxLayout;
    auto* right = new QVBoxLayout;
    layout->addLayout(columns);
    layout->addStretch(1);
    columns->addWidget(makeDirectFrame(), 1);
    columns->addLayout(right, 1);
    right->addWidget(makeModemFrame());
    right->addWidget(makeInitialisationFrame());
    right->addWidget(makeDeviceFrame());

    // `activated` is the operator's choice alone, not that of showSettings.
    connect(cbbCanal2, &QComboBox::activated, this, &PortsPage::modemLineChosen);
    connect(cbbVelocidade2, &QComboBox::activated, this, &PortsPage::modemLineChosen);
}

QGroupBox* PortsPage::makeDirectFrame()
{
    // The tool tips of the two lines have always been those of other controls.
    return makeFrame(u"Conexión directa"_s,
                     {{u"Canal:"_s, cbbCanal, u"cbbCanal"_s,
                       u"Establece el canal utilizado para las conexión directa con el equipo"_s},
                      {u"Velocidad:"_s, cbbVelocidade, u"cbbVelocidade"_s,
                       u"Velocidad del canal serie utilizado en la conexión directa"_s},
                      {u"Paridad:"_s, cbbParidade, u"cbbParidade"_s,
                       u"Paridad de los datos enviados mediante conexión directa"_s},
                      {u"Bits datos:"_s, cbbBits, u"cbbBits"_s,
                       u"Número de bits de datos utilizados en la conexión directa"_s},
                      {u"Bits parada:"_s, cbbParo, u"cbbParo"_s,
                       u"Bits de parada de la comunicación por conexión directa"_s},
                      {u"DTR:"_s, cbbDTR, u"cbbDTR"_s,
                       u"Número de bits de datos utilizados en la conexión directa"_s},
                      {u"RTS:"_s, cbbRTS, u"cbbRTS"_s,
                       u"Bits de parada de la comunicación por conexión directa"_s}});
}

QGroupBox* PortsPage::makeModemFrame()
{
    return makeFrame(u"Conexión por módem"_s,
                     {{u"Canal:"_s, cbbCanal2, u"cbbCanal2"_s,
                       u"Número del canal de comunicaciones utilizado por el módem"_s},
                      {u"Velocidad:"_s, cbbVelocidade2, u"cbbVelocidade2"_s,
                       u"Velocidad de comunicaciones del puerto serie del módem"_s}});
}

QGroupBox* PortsPage::makeInitialisationFrame()
{
    auto* frame = new QGroupBox(u"Cadena inicialización"_s);
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(txtInicializacion);
    describe(*txtInicializacion, u"txtInicializacion"_s, u"Cadena inicialización"_s,
             u"Comandos de inicialización del módem (p.e. ATZ)"_s);
    return frame;
}

QGroupBox* PortsPage::makeDeviceFrame()
{
    return makeFrame(u"Equipo"_s,
                     {{u"Estación:"_s, txtEstacion, u"txtEstacion"_s, {}},
                      {u"Identificación:"_s, txtIdentificacion, u"txtIdentificacion"_s, {}}});
}

void PortsPage::showSettings(CommSettings& settings)
{
    bool isNumber = false;
    const int channel = settings.directPort.trimmed().toInt(&isNumber);
    if (!isNumber || channel < 0 || channel >= channelCount)
        settings.directPort = u"0"_s;
    cbbCanal->setCurrentIndex(settings.directPort.trimmed().toInt());
    selectText(*cbbVelocidade, settings.directSpeed);
    selectText(*cbbBits, settings.directBits);
    selectText(*cbbParidade, settings.directParity);
    selectText(*cbbParo, settings.directStopBits);
    selectText(*cbbDTR, settings.directDtr);
    selectText(*cbbRTS, settings.directRts);
    // Looked up by its text like the others, so an index selects nothing, and is kept.
    selectText(*cbbCanal2, settings.modemPort);
    cbbCanal2->setPlaceholderText(u"COM%1"_s.arg(settings.modemPortNumber()));
    selectText(*cbbVelocidade2, settings.modemSpeed);
    txtInicializacion->setText(settings.modemInitialisation);
    txtEstacion->setText(settings.station);
    txtIdentificacion->setText(settings.identification);
    showDevices();
}

void PortsPage::storeInto(CommSettings& settings) const
{
    storeIndex(*cbbCanal, settings.directPort);
    storeText(*cbbVelocidade, settings.directSpeed);
    storeText(*cbbBits, settings.directBits);
    storeText(*cbbParidade, settings.directParity);
    storeText(*cbbParo, settings.directStopBits);
    storeText(*cbbDTR, settings.directDtr);
    storeText(*cbbRTS, settings.directRts);
    storeModemLineInto(settings);
    settings.modemInitialisation = txtInicializacion->text();
    settings.station = txtEstacion->text();
    settings.identification = txtIdentificacion->text();
}

void PortsPage::storeModemLineInto(CommSettings& settings) const
{
    storeIndex(*cbbCanal2, settings.modemPort);
    storeText(*cbbVelocidade2, settings.modemSpeed);
}

void PortsPage::showDevices()
{
    // Asked once for both lists: each question goes to the system.
    const QStringList devices = m_names.devices();
    ::showDevices(*cbbCanal, devices, m_link.directPort());
    ::showDevices(*cbbCanal2, devices, m_link.modemPort());
}
