#include "WorkflowFixture.h"

#include "MessageCodes.h"

using namespace Qt::StringLiterals;

void WorkflowFixture::load()
{
    m_workflow.reset();
    m_fixture = std::make_unique<LinkFixture>();
    LinkFixture& f = *m_fixture;
    m_workflow = std::make_unique<ConnectionWorkflow>(f.crono, f.link, f.globais, f.log);
    connect(m_workflow.get(), &ConnectionWorkflow::clockCommandsUnlocked, this, [this] {
        m_steps.append(m_fixture->globais.LinkEstablished ? u"unlocked"_s : u"?"_s);
    });
    connect(m_workflow.get(), &ConnectionWorkflow::clockCommandsLocked, this, [this] {
        m_steps.append(m_fixture->tmrCrono.isEnabled() ? u"?"_s : u"timer off, locked"_s);
    });
    connect(m_workflow.get(), &ConnectionWorkflow::clockWindowsOutdated, this,
            [this] { m_steps.append(m_fixture->globais.LinkEstablished ? u"?"_s : u"windows"_s); });
    connect(m_workflow.get(), &ConnectionWorkflow::connectionStatusChanged, this,
            [this](bool connected) { m_steps.append(connected ? u"shown"_s : u"not shown"_s); });
    connect(&f.link, &MessageLink::VisualizaPorto, this, [this](const QString& text) {
        m_steps.append(text.isEmpty() ? u"link ended"_s : text);
    });
    m_workflow->load();
    QCOMPARE(f.log.lines, QStringList{u"Conexión interrumpida"_s});
    f.log.lines.clear();
}

void WorkflowFixture::connectToClock()
{
    m_workflow->Conectar(false);
    m_fixture->tick(10);
    m_fixture->takeRequest();
}

void WorkflowFixture::identify()
{
    connectToClock();
    m_fixture->answerHex("0200");
}

void WorkflowFixture::establish(const QByteArray& block)
{
    identify();
    answerPoll(block);
    m_fixture->log.lines.clear();
    m_steps.clear();
}

void WorkflowFixture::answerPoll(const QByteArray& block)
{
    m_fixture->tick(10);
    QCOMPARE(m_fixture->takeRequestBody(), QByteArray::fromHex("00"));
    m_fixture->answer(block);
}

void WorkflowFixture::failIdentification()
{
    m_fixture->tick(10);
    QCOMPARE(m_fixture->takeRequest().code, messagecode::Identification);
    m_fixture->answerHex("0205");
}
