#pragma once

class SerialPort;

/// What the link hands over to the modem's side of the communications: the command phases (link
/// states 1 to 6), and what the modem says while nothing is under way.
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
    /// The connection has ended under whatever was going on.
    virtual void ended() = 0;
};
