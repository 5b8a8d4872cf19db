#pragma once

class SerialPort;

/// What the link calls while it is in a command phase (link states 1 to 6), and when the modem
/// sends something while the link is idle. ModemControl implements it.
class ModemDialogue {
public:
    virtual ~ModemDialogue() = default;

    /// The modem's port has been opened for a connection: initialise the modem and dial. The link
    /// lets events run until its state is idle again.
    virtual void start() = 0;
    /// Bytes wait in the modem's port, in link state 0 to 6. Reads them as long as that is so.
    virtual void received(SerialPort& port) = 0;
    /// The time of a command phase is out.
    virtual void timedOut() = 0;
    /// The connection has ended. A command that was running is over, and its answer is not awaited.
    virtual void ended() = 0;
};
