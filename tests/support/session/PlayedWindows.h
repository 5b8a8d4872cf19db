#pragma once

#include "FirmwareTransfer.h"
#include "HexFile.h"
#include "LinkFixture.h"
#include "ProgrammeExchange.h"
#include "RemoteControl.h"
#include "Watched.h"

#include <functional>
#include <memory>
#include <vector>

/// The logic of a program's windows, as their forms use it. A window is opened and closed by the
/// test, or closes itself as its form does.
class PlayedWindows {
public:
    PlayedWindows(LinkFixture& fixture, Invariants& invariants)
        : m_fixture(fixture), m_invariants(invariants)
    {}

    /// Runs while a box is open; may do what can still happen then.
    std::function<void()> whileBoxIsOpen;
    /// Windows that close are destroyed at once, and not by deleteClosed.
    bool destroysAtOnce = false;
    /// What the programming window edits.
    Programme programme;

    void openSetting();
    /// Sets the clock to these values, or to the computer's when there are none.
    void setClock(const std::optional<ClockFields>& fields);
    void openRemote();
    void setManual(bool manual);
    void toggle(int output);
    /// Loads the blocks from the general data.
    void openProgramme();
    void readHolidays();
    void sendProgramme();
    void openFirmware(const QList<ExpectedSession::Line>& image);
    void sendFirmware(bool resets);
    void interruptFirmware();
    void closeSetting();
    void closeRemote();
    void closeProgramme();
    void closeFirmware();
    void deleteClosed() { m_closed.clear(); }

    bool isSetting() const { return m_setting && m_invariants.expected.setting.state != 0; }
    bool isProgramming() const { return m_exchange && m_invariants.expected.programme.state != 0; }
    bool isSendingFirmware() const
    {
        return m_transfer && m_invariants.expected.firmware.isSending;
    }

    /// Null while the window is closed.
    const ClockSetting* setting() const { return m_setting ? &m_setting->client : nullptr; }
    const RemoteControl* remote() const { return m_remote ? &m_remote->client : nullptr; }
    const ProgrammeExchange* exchange() const { return m_exchange.get(); }
    const FirmwareTransfer* transfer() const { return m_transfer.get(); }

    /// As the request carries them: seconds, minutes, hours, day, month, year of the century.
    static QByteArray timeBytes(const ClockFields& fields);

private:
    /// A window's logic and its place in the timer service.
    template<typename Client>
    struct Window {
        template<typename... Arguments>
        explicit Window(frmCrono& crono, qint16 period, Arguments&&... arguments)
            : client(std::forward<Arguments>(arguments)...), registration(crono, client, period)
        {}

        Client client;
        CronoRegistration registration;
    };
    using SettingWindow = Window<Watched<ClockSetting, Asker::Setting>>;
    using RemoteWindow = Window<Watched<RemoteControl, Asker::Remote>>;
    using Exchange = Watched<ProgrammeExchange, Asker::Programme>;
    using Transfer = Watched<FirmwareTransfer, Asker::Firmware>;

    void connectExchange();
    void connectTransfer();
    void checkBlocks(const QByteArray& generalData);
    void openBox() const;
    template<typename Part>
    void discard(std::unique_ptr<Part>& part, Asker asker);

    LinkFixture& m_fixture;
    Invariants& m_invariants;
    HexFile m_file;
    QList<ExpectedSession::Line> m_image;
    std::unique_ptr<SettingWindow> m_setting;
    std::unique_ptr<RemoteWindow> m_remote;
    std::unique_ptr<Exchange> m_exchange;
    std::unique_ptr<Transfer> m_transfer;
    std::vector<std::shared_ptr<void>> m_closed;
};
