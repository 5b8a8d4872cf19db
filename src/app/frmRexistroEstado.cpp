#include "frmRexistroEstado.h"

#include "ClockOfDay.h"
#include "LogText.h"

#include <QApplication>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmRexistroEstado::frmRexistroEstado(QMdiArea& area, const ClockOfDay& clock)
    : MdiForm(area), m_clock(clock), txtRexistro(new LogText)
{
    setObjectName(u"frmRexistroEstado"_s);
    setWindowTitle(u"Registro de estado de la aplicación"_s);
    txtRexistro->setObjectName(u"txtRexistro"_s);
    txtRexistro->setAccessibleName(windowTitle());
    txtRexistro->setFrameShape(QFrame::NoFrame);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(txtRexistro);
    setFocusProxy(txtRexistro);
}

void frmRexistroEstado::Rexistra(const QString& message, bool show)
{
    const QDateTime now = m_clock.now();
    const QString stamp = now.toString(u"dd'/'MM'/'yyyy' - 'HH':'mm':'ss"_s);
    txtRexistro->append(stamp + u" :: "_s + message + u"\n"_s);
    // While a modal window is open it could not be used; it can be opened from the menu afterwards.
    if (show && !QApplication::activeModalWidget())
        showForm();
}

QSize frmRexistroEstado::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {metrics.averageCharWidth() * 72, metrics.lineSpacing() * 16};
}

bool frmRexistroEstado::queryUnload(CloseReason reason)
{
    if (reason != CloseReason::Operator)
        return true;
    hideForm();
    return false;
}
