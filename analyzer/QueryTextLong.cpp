// Long texts: they are coloured on a thread of their own and come into the editor by pieces, so that no event waits.
#include "analyzer/QueryText.h"

#include "controls/EditorContent.h"
#include "controls/RichTextBox.h"
#include "session/Pump.h"
#include "session/PumpUntil.h"
#include "session/Status.h"
#include "sqltext/IntColorAll.h"
#include <QPointer>
#include <QScopeGuard>
#include <QTimer>
#include <atomic>
#include <optional>

namespace {

constexpr int kTellMs = 150; // shorter work says nothing
const QString kShowing = QStringLiteral("Showing the text ...");
// The very text, not one that is equal to it: that would have to be looked at as a whole.
bool IsSame(const QString &one, const QString &other)
{
    return one.constData() == other.constData() && one.size() == other.size();
}

const QString kStops = QStringLiteral(" (Esc stops)");

} // namespace

qsizetype QueryText::AtOnce = 64 * 1024;

// One colouring, shared with its thread: the user may leave that behind.
struct QueryText::LongText
{
    LongText(const RichTextBox &box, const FixTextState &fixState)
        : former(box.Text()), look(box.Look()), colouring(box), state(fixState)
    {
    }

    const QString former;
    const RtfDocument look;
    const WholeColouring colouring;
    const FixTextState state;
    QString text;         // any kind of line end
    bool coloured = true; // else it stays plain
    bool isNew = true;    // it was not in the editor so far, and may be a state for the history
    std::atomic<int> percent = 0;

    qsizetype length = 0; // of the text before it was coloured
    std::optional<QString> entry;
    std::optional<EditorContent> content;

    void Make()
    {
        RtfDocument plain = look;
        plain.text = EditorText::Normalised(text);
        length = plain.text.size();
        if (isNew && state.ChangedMuch(length))
            entry = WriteRtf(plain);
        plain.colours.clear();
        std::optional<RtfDocument> document;
        if (coloured) {
            if (plain.text.startsWith(u'\t'))
                plain.text[0] = u' ';
            document = colouring.Document(plain.text, [this](int done) { percent = done; });
            if (!document && !isNew)
                return; // nothing but blanks: there is nothing to colour
        }
        content.emplace(document ? *document : plain, former);
    }
};

// Beside the living windows; false when Escape gave it up.
bool QueryText::MakeLong(const std::shared_ptr<LongText> &made)
{
    const QString before = LastStatus();
    QString said;
    QTimer tell;
    connect(&tell, &QTimer::timeout, &tell, [&] {
        said = QStringLiteral("Colouring ... %1 %").arg(made->percent) + kStops;
        SetStatus(said);
    });
    tell.start(kTellMs);
    const auto putBack = qScopeGuard([&] {
        if (!said.isEmpty() && LastStatus() == said)
            SetStatus(before);
    });
    return RunAbandonable(QString(), [made] { made->Make(); });
}

// The newest text that is asked for wins. One that must not be lost stays without its colours when the user does not
// want to wait for them.
bool QueryText::SetLongText(const QString &text, bool mayGiveUp)
{
    m_coming = text;
    if (std::exchange(m_bringing, true))
        return true; // whoever is at it takes this one
    const QPointer<QueryText> self(this);
    const auto over = qScopeGuard([&] {
        if (!self)
            return;
        m_bringing = false;
        if (mayGiveUp || !IsEnding()) // what is saved at the program's end is the text that was to come
            m_coming.reset();
    });
    EndBracketShow();
    for (bool coloured = true;;) {
        const auto made = std::make_shared<LongText>(*m_editor, m_fixState);
        made->text = *m_coming;
        made->coloured = coloured;
        const bool ready = MakeLong(made);
        if (!self)
            return false;
        if (!ready && (mayGiveUp || IsEnding()))
            return false;
        coloured = coloured && ready;
        if (!ready || !IsSame(made->text, *m_coming))
            continue;
        bool given = false;
        if (ShowLong(*made, mayGiveUp, &given))
            return true;
        if (!self || given)
            return false;
    }
}

// False when the text became another one meanwhile, or when it was given up.
bool QueryText::ShowLong(LongText &made, bool mayGiveUp, bool *given)
{
    const QPointer<QueryText> self(this);
    Breather breather(mayGiveUp ? kShowing + kStops : kShowing);
    m_InParse = true;
    const bool shown = m_editor->TakeContent(std::move(*made.content), [&] {
        const bool goOn = breather.Breathe() || !mayGiveUp;
        return self && goOn && (!m_coming || IsSame(made.text, *m_coming));
    });
    if (!self)
        return false;
    m_InParse = false;
    *given = mayGiveUp && breather.Cancelled();
    if (!shown)
        return false;
    if (made.isNew) {
        m_editor->SetSelStart(0);
        if (made.entry)
            m_History.AddChange(*made.entry, 0, 0);
        m_fixState.Coloured(made.length);
        m_journey.Seal();
    }
    return true;
}

// The whole of a long text that stands in the editor. Escape leaves its colours as they are.
void QueryText::ColourLong()
{
    if (m_bringing)
        return; // another one is coming
    const QPointer<QueryText> self(this);
    const auto made = std::make_shared<LongText>(*m_editor, m_fixState);
    made->text = m_editor->Text();
    made->isNew = false;
    bool given = false;
    if (MakeLong(made) && self && made->content)
        ShowLong(*made, true, &given);
}
