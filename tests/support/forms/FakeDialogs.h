#pragma once

#include "Dialogs.h"

#include <QList>

#include <functional>

/// Records the questions and gives the answers that the test has prepared.
class FakeDialogs final : public Dialogs {
public:
    struct Box {
        Icon icon;
        QString title;
        QString text;
        bool question;
    };

    QList<Box> boxes;
    QList<FileRequest> fileRequests;
    QStringList prompts;

    /// The next answers. The default is No, or cancelled.
    QList<bool> confirmations;
    QList<std::optional<QString>> texts;
    QStringList paths;
    /// Runs while a box or dialog is open, as events do.
    std::function<void()> whileUp;

    void tell(Icon icon, const QString& title, const QString& text) override
    {
        boxes.append({icon, title, text, false});
        runMeanwhile();
    }
    bool confirm(Icon icon, const QString& title, const QString& text) override
    {
        boxes.append({icon, title, text, true});
        runMeanwhile();
        return confirmations.isEmpty() ? false : confirmations.takeFirst();
    }
    std::optional<QString> askText(const QString& title, const QString& prompt) override
    {
        prompts.append(title + QStringLiteral("|") + prompt);
        runMeanwhile();
        return texts.isEmpty() ? std::nullopt : texts.takeFirst();
    }
    QString openFile(const FileRequest& request) override { return answerFile(request); }
    QString saveFile(const FileRequest& request) override { return answerFile(request); }

private:
    QString answerFile(const FileRequest& request)
    {
        fileRequests.append(request);
        runMeanwhile();
        return paths.isEmpty() ? QString() : paths.takeFirst();
    }
    void runMeanwhile()
    {
        if (whileUp)
            whileUp();
    }
};
