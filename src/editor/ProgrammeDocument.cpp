#include "ProgrammeDocument.h"

#include "EditName.h"
#include "FileFailure.h"
#include "ModelChange.h"
#include "ProgrammeCheck.h"
#include "ProgrammeFile.h"
#include "WholeFile.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

QByteArray hashOf(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

/// With one byte more than is read, so that ProgrammeCheck notices a file that is too long.
std::optional<QByteArray> bytesOf(const QString& path)
{
    return WholeFile::read(path, ProgrammeFile::maximumBytes + 1);
}

} // namespace

/// The states before and after an edit, whole: so undoing gives back the very programme.
class ProgrammeDocument::Step final : public QUndoCommand {
public:
    Step(ProgrammeDocument& document, const State& after, const QString& name,
         const QString& mergeKey)
        : QUndoCommand(name),
          m_document(document),
          m_before(document.m_state),
          m_after(after),
          m_mergeKey(mergeKey),
          m_typing(document.m_typing)
    {}

    void undo() override { restore(m_before); }
    void redo() override { restore(m_after); }
    int id() const override { return m_mergeKey.isEmpty() ? notMerged : merged; }
    bool mergeWith(const QUndoCommand* other) override
    {
        const auto* next = static_cast<const Step*>(other);
        if (next->m_mergeKey != m_mergeKey || next->m_typing != m_typing)
            return false;
        m_after = next->m_after;
        setObsolete(m_after == m_before);
        return true;
    }

private:
    void restore(const State& state)
    {
        m_document.m_state = state;
        // The first time it is part of the edit itself, which goes on.
        if (std::exchange(m_isDone, true))
            m_document.finishTyping();
    }

    static constexpr int notMerged = -1;
    static constexpr int merged = 1;

    ProgrammeDocument& m_document;
    const State m_before;
    State m_after;
    const QString m_mergeKey;
    const int m_typing;
    bool m_isDone = false;
};

ProgrammeDocument::ProgrammeDocument(ClockModel model, QObject* parent)
    : QObject(parent), m_state{{}, model}
{
    // Only now is the stack as it will be: a step that is being done is not on it yet.
    connect(&m_undoStack, &QUndoStack::indexChanged, this, &ProgrammeDocument::changed);
    connect(&m_undoStack, &QUndoStack::cleanChanged, this,
            [this](bool clean) { emit modifiedChanged(!clean); });
}

ProgrammeDocument::~ProgrammeDocument()
{
    // The stack tells that it is being emptied.
    m_undoStack.disconnect(this);
}

void ProgrammeDocument::edit(const Programme& after)
{
    const State state = edited(after);
    const EditName name = EditName::of(m_state.programme, state.programme);
    push(state, name.name, name.mergeKey);
}

void ProgrammeDocument::edit(const Programme& after, const QString& name)
{
    push(edited(after), name, {});
}

void ProgrammeDocument::changeModel(ClockModel model)
{
    push({ModelChange::converted(m_state.programme, model), model}, u"modelo"_s, {});
}

ProgrammeDocument::State ProgrammeDocument::edited(const Programme& after) const
{
    State state{ModelChange::converted(after, m_state.model), m_state.model};
    if (m_state.model == ClockModel::Hct7300)
        return state;
    for (std::size_t block = 0; block < state.programme.blocks.size(); ++block) {
        state.programme.blocks[block].Duration = m_state.programme.blocks[block].Duration;
        state.programme.blocks[block].Mode = m_state.programme.blocks[block].Mode;
    }
    return state;
}

void ProgrammeDocument::push(const State& after, const QString& name, const QString& mergeKey)
{
    if (after != m_state)
        m_undoStack.push(new Step(*this, after, name, mergeKey));
}

QString ProgrammeDocument::name() const
{
    return m_path.isEmpty() ? u"Sin título"_s : QFileInfo(m_path).fileName();
}

QString ProgrammeDocument::folder() const
{
    return m_path.isEmpty() ? QString() : QFileInfo(m_path).path();
}

ProgrammeDocument::OpenResult ProgrammeDocument::open(const QString& path, ClockModel model)
{
    const auto bytes = bytesOf(path);
    if (!bytes)
        return {FileFailure::ofReading(path), {}};
    const QList<ProgrammeProblem> problems = ProgrammeCheck::problemsOf(*bytes, model);
    const Programme programme = ProgrammeFile::programmeIn(
        bytes->first(std::min(bytes->size(), ProgrammeFile::maximumBytes)), model);
    begin({programme, model, QFileInfo(path).absoluteFilePath(), hashOf(*bytes),
           ProgrammeCheck::isMisread(problems)},
          true);
    return {{}, problems};
}

void ProgrammeDocument::recover(const UnsavedWork& work) { begin(work, false); }

UnsavedWork ProgrammeDocument::unsavedWork() const
{
    return {m_state.programme, m_state.model, m_path, m_fileHash, m_isMisread};
}

void ProgrammeDocument::begin(const UnsavedWork& work, bool isSaved)
{
    m_state = {work.programme, work.model};
    m_path = work.path;
    m_fileHash = work.fileHash;
    m_isMisread = work.isMisread;
    finishTyping();
    m_undoStack.clear();
    if (isSaved)
        m_undoStack.setClean();
    else
        m_undoStack.resetClean();
    emit fileChanged();
    emit changed();
}

ProgrammeDocument::SaveResult ProgrammeDocument::save(Overwriting overwriting)
{
    return saveAs(m_path, overwriting);
}

ProgrammeDocument::SaveResult ProgrammeDocument::saveAs(const QString& path,
                                                        Overwriting overwriting)
{
    finishTyping();
    if (overwriting == Overwriting::NeedsPermission)
        if (const auto found = objection(path))
            return *found;
    if (!ProgrammeFile::save(path, m_state.programme, m_state.model))
        return {SaveResult::Outcome::Failed, FileFailure::ofWriting(path)};
    m_path = QFileInfo(path).absoluteFilePath();
    m_fileHash = hashOf(ProgrammeFile::text(m_state.programme, m_state.model));
    m_isMisread = false;
    m_undoStack.setClean();
    emit fileChanged();
    return {SaveResult::Outcome::Saved, {}};
}

std::optional<ProgrammeDocument::SaveResult> ProgrammeDocument::objection(const QString& path) const
{
    // Files that do not exist compare equal, and nothing is lost there.
    if (m_path.isEmpty() || !QFileInfo::exists(path) || QFileInfo(path) != QFileInfo(m_path))
        return std::nullopt;
    if (isChangedOutside())
        return SaveResult{
            SaveResult::Outcome::ChangedOutside,
            u"Otro programa ha cambiado el archivo \"%1\" desde que se abrió."_s.arg(name())};
    if (m_isMisread)
        return SaveResult{SaveResult::Outcome::Misread,
                          u"En el archivo \"%1\" hay valores que no se han podido leer y que se "
                          "perderán."_s.arg(name())};
    return std::nullopt;
}

bool ProgrammeDocument::isChangedOutside() const
{
    if (m_path.isEmpty())
        return false;
    const auto bytes = bytesOf(m_path);
    return bytes && hashOf(*bytes) != m_fileHash;
}
