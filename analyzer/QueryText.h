#pragma once
// The text of an Analyzer: an editor that is coloured while it is typed in, that goes back through its states, and that
// can show its bracket pairs. It owns none of the widgets: the editor outlives it.
//
// A long text is coloured on a thread of its own and comes into the editor by pieces, beside the living windows; Escape
// gives that up. Until it has come Text() is already that text, so that nothing saves an empty editor over it.
//
// Every change passes here, whoever makes it: keys, the mouse, an input method, the colouring itself. The flag
// m_InParse keeps the colouring's own change from being coloured again. Positions count from 0, a line end is two.
// Interface thread; nothing raises.

#include "analyzer/BracketShow.h"
#include "sqltext/EditAssist.h"
#include "sqltext/FixText.h"
#include "sqltext/TextJourney.h"
#include "sqltext/clsStringHistory.h"
#include <QElapsedTimer>
#include <memory>
#include <optional>

class RichTextBox;

class QueryText : public QObject
{
    Q_OBJECT
public:
    explicit QueryText(RichTextBox *editor);

    RichTextBox *Editor() const { return m_editor; }
    QString RunText() const; // what a run would execute: selection, statement at the caret, or the whole text
    QString Text() const;    // with CR LF; of a text on its way, that one
    // And colours it. False when the user gave a long text up, and then the former one stays, or when the window was
    // closed meanwhile.
    bool SetText(const QString &text);
    // A stored text that comes later: from now on it is the text, so that no save puts an empty one in its place. Then
    // it comes, and Escape leaves out its colours alone.
    void Promise(const QString &text);
    void TakeStored(const QString &text);
    static qsizetype AtOnce; // characters; a text up to this is coloured at once. Tests set it
    // Text and selection as the user has them: a show of brackets, which writes into the text, is ended.
    EditText Edited();
    // A change of more than a key: text and selection anew, then the colouring of what the selection touches.
    void Bulk(const EditText &edit);

    // Colours what an edit calls for; `mode` says which stretch when nothing is selected.
    void FixText(bool all, bool checkLength, FixMode mode);
    void LineLeft(); // Return, Up or Down: colours round the caret, at most twice a second

    void KeepHistory(); // the present state becomes one of the ten that Undo comes to first
    void Undo();
    void Redo();
    void BeginHere(); // forgets every state but the present one, not the ten

    void ShowBrackets(BracketKind kind); // one pair after another
    void EndBracketShow();               // the text as it was before the show
    BracketShow &Brackets() { return m_brackets; }

private:
    void OnChanged();
    void OnEdited(const QString &before, qsizetype start, qsizetype length, const QString &now);
    void Colour(bool all, bool checkLength, FixMode mode, const std::optional<FixRange> &lines);
    bool ColoursAll(bool all, FixMode mode, const std::optional<FixRange> &lines) const;
    struct LongText;
    bool SetLongText(const QString &text, bool mayGiveUp);
    bool MakeLong(const std::shared_ptr<LongText> &made);
    bool ShowLong(LongText &made, bool mayGiveUp, bool *given);
    void ColourLong();
    void ShowState(const std::optional<TextJourney::State> &state);
    void LoadShow(const QString &rtf);

    RichTextBox *m_editor;
    bool m_InParse = false;
    std::optional<QString> m_coming; // a long text on its way into the editor
    bool m_bringing = false;         // and somebody is at it
    clsStringHistory m_History;
    TextJourney m_journey;             // every state since the window was opened, beside the history's ten
    bool m_travelling = false;         // what is written is no edit: a step of the journey, or a show of brackets
    std::optional<FixRange> m_arrived; // several lines that came in one edit and are not coloured yet
    FixTextState m_fixState;
    QElapsedTimer m_clock; // since the window was made
    BracketShow m_brackets;
};
