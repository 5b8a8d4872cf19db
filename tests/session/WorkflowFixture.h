#pragma once

#include "ConnectionWorkflow.h"
#include "LinkFixture.h"

#include <QTest>

/// A connection to a clock that the test plays, and the signals that the workflow has emitted.
class WorkflowFixture : public QObject {
    Q_OBJECT
protected:
    WorkflowFixture() = default;

    /// A loaded workflow with an empty log.
    void load();
    void connectToClock();
    void identify();
    /// Connects to a clock that answers with `block`, and clears log and signals.
    void establish(const QByteArray& block = LinkFixture::fullBlock());
    void answerPoll(const QByteArray& block);
    void failIdentification();

    std::unique_ptr<LinkFixture> m_fixture;
    std::unique_ptr<ConnectionWorkflow> m_workflow;
    QStringList m_steps;
};
