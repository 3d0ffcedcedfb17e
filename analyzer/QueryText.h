#pragma once
// The text of an Analyzer: an editor that is coloured while it is typed in, that goes back through its states, and that
// can show its bracket pairs. It owns none of the widgets: the editor outlives it.
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
#include <optional>

class RichTextBox;

class QueryText : public QObject
{
    Q_OBJECT
public:
    explicit QueryText(RichTextBox *editor);

    RichTextBox *Editor() const { return m_editor; }
    QString RunText() const;           // what a run would execute: selection, statement at the caret, or the whole text
    void SetText(const QString &text); // and colours it
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
    void ShowState(const std::optional<TextJourney::State> &state);
    void LoadShow(const QString &rtf);

    RichTextBox *m_editor;
    bool m_InParse = false;
    clsStringHistory m_History;
    TextJourney m_journey;             // every state since the window was opened, beside the history's ten
    bool m_travelling = false;         // what is written is no edit: a step of the journey, or a show of brackets
    std::optional<FixRange> m_arrived; // several lines that came in one edit and are not coloured yet
    FixTextState m_fixState;
    QElapsedTimer m_clock; // since the window was made
    BracketShow m_brackets;
};
