#include "frmAcerca.h"

#include "modGlobais.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 64;
constexpr int deviceWidth = 120;
constexpr int deviceHeight = 88;

/// Product data: whom the operator turns to.
const std::array<QString, 5>& contactLines()
{
    static const std::array<QString, 5> lines{
        u"Relojes programadores de señales HCT-7200 y HCT-7300"_s,
        u"Avisos por timbre y sirena para centros de enseñanza y de trabajo"_s,
        u"Asistencia técnica: consulte a su instalador"_s,
        u"Indique el modelo del equipo y la versión del programa"_s,
        u"El manual del operador acompaña al programa"_s,
    };
    return lines;
}

QLabel* makeLabel(const QString& name, const QString& text)
{
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* makePicture(const QString& name, const QString& description, const QIcon& icon,
                    const QSize& size)
{
    auto* picture = new QLabel;
    picture->setObjectName(name);
    picture->setPixmap(icon.pixmap(size, picture->devicePixelRatio()));
    picture->setAccessibleName(description);
    return picture;
}

} // namespace

frmAcerca::frmAcerca(QWidget* owner, const QString& version,
                     const std::function<void()>& systemInformation)
    : QDialog(owner)
{
    setObjectName(u"frmAcerca"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(u"Acerca de "_s + applicationTitle());
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setSpacing(16);
    layout->addWidget(makeTitle(version));
    layout->addWidget(makeContact());
    layout->addWidget(makeButtons(systemInformation));
    cmdOK->setFocus();
}

QWidget* frmAcerca::makeTitle(const QString& version)
{
    auto* title = new QWidget;
    auto* grid = new QGridLayout(title);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(16);
    auto* picIcon =
        makePicture(u"picIcon"_s, u"Icono de la aplicación"_s, windowIcon(), {iconSize, iconSize});
    auto* lblTitle = makeLabel(u"lblTitle"_s, applicationTitle());
    QFont large = lblTitle->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    lblTitle->setFont(large);
    auto* lblVersion = makeLabel(u"lblVersion"_s, u"Versión "_s + version);
    lblVersion->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    grid->addWidget(picIcon, 0, 0, 2, 1, Qt::AlignHCenter);
    grid->setColumnMinimumWidth(0, deviceWidth);
    grid->addWidget(lblTitle, 0, 1, Qt::AlignBottom);
    grid->addWidget(lblVersion, 1, 1, Qt::AlignTop);
    grid->setColumnStretch(1, 1);
    return title;
}

QWidget* frmAcerca::makeContact()
{
    auto* contact = new QWidget;
    auto* grid = new QGridLayout(contact);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(16);
    QIcon device(u":/icons/device-120.png"_s);
    device.addFile(u":/icons/device-240.png"_s);
    const int lines = static_cast<int>(contactLines().size());
    grid->addWidget(makePicture(u"imgEquipo"_s, u"Reloj programador de señales"_s, device,
                                {deviceWidth, deviceHeight}),
                    0, 0, lines, 1, Qt::AlignTop);
    for (int i = 0; i < lines; ++i)
        grid->addWidget(
            makeLabel(u"lblContacto(%1)"_s.arg(i), contactLines()[static_cast<std::size_t>(i)]), i,
            1);
    grid->setColumnStretch(1, 1);
    return contact;
}

QWidget* frmAcerca::makeButtons(const std::function<void()>& systemInformation)
{
    auto* buttons = new QDialogButtonBox;
    QPushButton* cmdSysInfo =
        buttons->addButton(u"&Información..."_s, QDialogButtonBox::ActionRole);
    cmdSysInfo->setObjectName(u"cmdSysInfo"_s);
    cmdSysInfo->setAccessibleName(u"Información..."_s);
    cmdOK = buttons->addButton(u"Cerrar"_s, QDialogButtonBox::RejectRole);
    cmdOK->setObjectName(u"cmdOK"_s);
    cmdOK->setAccessibleName(u"Cerrar"_s);
    cmdOK->setDefault(true);
    connect(cmdSysInfo, &QPushButton::clicked, this, systemInformation);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::close);
    return buttons;
}
