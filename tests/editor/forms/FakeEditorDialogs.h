#pragma once

#include "EditorDialogs.h"

#include <QList>
#include <QPrinter>

/// Records what is asked and gives the answers that the test has prepared.
class FakeEditorDialogs final : public EditorDialogs {
public:
    struct Box {
        QString text;
        QStringList buttons;
    };

    QList<Box> boxes;
    QList<FileRequest> fileRequests;
    QStringList printed;
    QStringList previewed;
    /// The PDF file that stands for the printer's paper; none when empty.
    QString paper;

    /// The next answers. The default is the last button, or cancelled.
    QList<int> answers;
    QList<ChosenFile> files;
    /// Runs while a box or dialog is open, as events do.
    std::function<void()> whileUp;

    void tell(Icon, const QString&, const QString& text) override
    {
        boxes.append({text, {}});
        runMeanwhile();
    }
    bool confirm(Icon, const QString&, const QString&) override { return false; }
    std::optional<QString> askText(const QString&, const QString&) override { return {}; }
    QString openFile(const FileRequest& request) override { return answerFile(request).path; }
    QString saveFile(const FileRequest& request) override { return answerFile(request).path; }
    ChosenFile openFileByFilter(const FileRequest& request) override { return answerFile(request); }
    int choose(Icon, const QString&, const QString& text, const QStringList& buttons) override
    {
        boxes.append({text, buttons});
        runMeanwhile();
        return answers.isEmpty() ? static_cast<int>(buttons.size()) - 1 : answers.takeFirst();
    }
    void print(const QString& documentName, const Drawing& draw) override
    {
        printed.append(documentName);
        if (paper.isEmpty())
            return;
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(paper);
        printer.setPageSize(QPageSize(QPageSize::A4));
        draw(printer);
    }
    void preview(const QString& documentName, const Drawing&) override
    {
        previewed.append(documentName);
    }

private:
    ChosenFile answerFile(const FileRequest& request)
    {
        fileRequests.append(request);
        runMeanwhile();
        return files.isEmpty() ? ChosenFile() : files.takeFirst();
    }
    void runMeanwhile() const
    {
        if (whileUp)
            whileUp();
    }
};
