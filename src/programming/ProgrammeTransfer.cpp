#include "ProgrammeTransfer.h"

#include "ProgrammeFile.h"
#include "ProgrammeMessages.h"
#include "StatusBlock.h"
#include "modGlobais.h"

#include <QStringList>

using namespace Qt::StringLiterals;

ProgrammeTransfer::ProgrammeTransfer(const ProgrammeExchange::Services& services, ClockModel model)
    : m_globais(services.globais),
      m_model(model),
      m_exchange(services, model, m_programme, [this] { return m_programme.table; })
{
    connect(&m_exchange, &ProgrammeExchange::holidaysRead, this, &ProgrammeTransfer::takeHolidays);
    connect(&m_exchange, &ProgrammeExchange::partAccepted, this, &ProgrammeTransfer::partAccepted);
    connect(&m_exchange, &ProgrammeExchange::sent, this, &ProgrammeTransfer::sent);
    connect(&m_exchange, &ProgrammeExchange::failed, this, &ProgrammeTransfer::failed);
}

void ProgrammeTransfer::open() { m_exchange.readHolidays(); }

void ProgrammeTransfer::takeHolidays(const HolidayTable& table)
{
    ProgrammeMessages::LoadBlocksFromStatusBlock(m_held, StatusBlock(m_globais.GeneralData),
                                                 m_model);
    m_held.table = table;
    if (m_isOpen) {
        emit wasReadBack();
        return;
    }
    m_isOpen = true;
    m_programme = m_held;
    // The window shows the first block when it opens, and stores it before it saves or sends.
    AlarmBlock& shown = m_programme.blocks.front();
    shown.Mode = ProgrammeRules::shownMode(shown.Mode, m_model);
    emit opened();
}

std::optional<ProgrammeRules::Violation> ProgrammeTransfer::load(const QByteArray& text)
{
    m_programme = ProgrammeFile::programmeIn(text, m_model);
    return ProgrammeRules::firstViolation(m_programme, m_model);
}

void ProgrammeTransfer::send()
{
    ProgrammeRules::NormaliseProgramme(m_programme);
    m_exchange.send();
}

void ProgrammeTransfer::readBack() { m_exchange.readAll(); }

QString ProgrammeTransfer::partsTaken() const
{
    QStringList taken;
    QStringList unsure;
    QStringList missing;
    for (int part = 0; part < ProgrammeExchange::partCount; ++part) {
        QStringList& list = part < m_exchange.partsAccepted() ? taken
                            : part < m_exchange.partsSent()   ? unsure
                                                              : missing;
        list.append(part < Programme::blockCount ? u"salida %1"_s.arg(part + 1)
                                                 : u"festivos y vacaciones"_s);
    }
    QStringList sentences;
    const auto add = [&sentences](const QString& what, const QStringList& parts) {
        if (!parts.isEmpty())
            sentences.append(u"%1: %2."_s.arg(what, parts.join(u", "_s)));
    };
    add(u"El reloj ha tomado"_s, taken);
    add(u"Sin confirmar"_s, unsure);
    add(u"Sin enviar"_s, missing);
    return sentences.join(u' ');
}
