#pragma once

#include "MdiForm.h"
#include "StatusLog.h"

class ClockOfDay;
class LogText;

/// The window with the log of the run, one line an entry: "21/11/2026 - 09:05:03 :: " and the
/// message. It starts empty, is saved nowhere, has no limit, and its operator only ever hides it.
class frmRexistroEstado : public MdiForm, public StatusLog {
    Q_OBJECT
public:
    frmRexistroEstado(QMdiArea& area, const ClockOfDay& clock);

    /// Leaves alone what the operator has selected and where the view stands; a view that stands
    /// at the end follows.
    void Rexistra(const QString& message, bool show) override;

    QSize sizeHint() const override;

protected:
    bool queryUnload(CloseReason reason) override;

private:
    const ClockOfDay& m_clock;
    LogText* txtRexistro;
};
