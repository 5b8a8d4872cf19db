#pragma once

#include "ClockJob.h"
#include "CronoRegistration.h"
#include "RemoteControl.h"

#include <array>
#include <map>

class Console;
struct CommonOptions;
class Session;

/// Shows the outputs, switches some of them by hand, or gives them back to the clock's programme.
/// The frames are those of the window. An output has the number of its row there: "Avisos 1" is 1.
class OutputsJob final : public ClockJob {
    Q_OBJECT
public:
    enum class Action { Show, Switch, GiveBack };
    struct Wish {
        Action action = Action::Show;
        /// For Switch: by number, whether the output is to be on.
        std::map<int, bool> positions;
    };

    OutputsJob(Session& session, Console& console, const CommonOptions& options, const Wish& wish);

    void begin() override;
    QString abandon() override;

private:
    using States = std::array<bool, RemoteControl::outputCount>;

    /// What to type to give the outputs back.
    QString automaticAdvice() const;
    /// Until it is given back, its programme rings no bell.
    QString manualWarning() const;
    void showState();
    void stateRead(quint8 restBits);
    void beginSwitching();
    void requestFailed(LinkStatus status);
    /// `states` by number, from 0 for output 1.
    void tell(bool manual, const States& states);
    void finish(ExitStatus status);

    Session& m_session;
    Console& m_console;
    const CommonOptions& m_options;
    const Wish m_wish;
    RemoteControl m_control;
    CronoRegistration m_registration;
    bool m_switching = false;
    int m_failures = 0;
};
