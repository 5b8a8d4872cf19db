#pragma once

#include "MdiForm.h"
#include "StatusLog.h"

class ClockOfDay;
class LogText;

/// The window with the status log. Each entry is one line: "21/11/2026 - 09:05:03 :: " and the
/// message. The log is empty at the start, is not saved, and has no limit. Closing the window hides
/// it.
class frmRexistroEstado : public MdiForm, public StatusLog {
    Q_OBJECT
public:
    frmRexistroEstado(QMdiArea& area, const ClockOfDay& clock);

    /// Selection and view stay as they are, except that a view at the end follows.
    void Rexistra(const QString& message, bool show) override;

    QSize sizeHint() const override;

protected:
    bool queryUnload(CloseReason reason) override;

private:
    const ClockOfDay& m_clock;
    LogText* txtRexistro;
};
