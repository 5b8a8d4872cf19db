#pragma once

#include "ConnectionWorkflow.h"
#include "LinkFixture.h"

#include <QTest>

/// A connection over a link whose far end is the test, and the steps that the workflow told of.
class WorkflowFixture : public QObject {
    Q_OBJECT
protected:
    WorkflowFixture() = default;

    /// A loaded workflow with an empty log.
    void load();
    void connectToClock();
    void identify();
    /// Connects to a clock that answers with `block`, and forgets what was logged and told.
    void establish(const QByteArray& block = LinkFixture::fullBlock());
    void answerPoll(const QByteArray& block);
    void failIdentification();

    std::unique_ptr<LinkFixture> m_fixture;
    std::unique_ptr<ConnectionWorkflow> m_workflow;
    QStringList m_steps;
};
