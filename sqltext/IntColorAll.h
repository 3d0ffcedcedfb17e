#pragma once
// The colouring: a text becomes a small RTF document in which keywords, quoted text, comments and bracketed names show.
//
// The result is that of a chain of passes over the whole text, each on what the one before left; see KeywordPlan.h and
// ColourPasses.h for how they are done. InitColorTable must have run. Interface thread, since the colour table and the
// two globals belong to it. Nothing raises. Positions are zero-based UTF-16 units; line ends are CR LF.

#include "sqltext/EditControl.h"
#include "sqltext/Keywords.h"

#include <QString>
#include <functional>
#include <memory>
#include <optional>

// Head and font line of the control last coloured.
extern QString gRTFHead;
extern QString gRTFFont;

// The coloured text without its frame. `wholeText` adds what keeps an empty last line.
QString ColourBody(const QString &text, const KeywordSet &keywords, bool wholeText);

// What a colouring reads of a control, and what it asks of it.
struct ColourRequest
{
    QString text;    // all of the control's text
    QString textRTF; // its RTF, for head and font line
    QString selText; // the text to colour in place of the selection; empty for the whole text
    qsizetype caretPos = 0;
};
struct ColourAnswer
{
    bool whole = true; // write `rtf` to TextRTF, otherwise to SelRTF
    QString rtf;
    qsizetype selStart = 0;
};
// Nothing when the text is empty or all blanks. Sets the two globals.
std::optional<ColourAnswer> intColorAll(const ColourRequest &request, const KeywordSet &keywords);

// Colours the control: with an empty `text` all of it, otherwise its selection, whose text that is. Then sets SelStart
// to `caretPos`. Uses gKeywordSet.
void intColorAll(EditControl &control, const QString &text, qsizetype caretPos);

// The colouring of a whole text away from the window thread, for texts that take long. Made on the window thread, where
// it takes what belongs there: the frame of the control, the switches, the keywords. Document may then be called on any
// thread; it gives what the other forms show, its text included.
class WholeColouring
{
public:
    explicit WholeColouring(const EditControl &control);
    ~WholeColouring();
    WholeColouring(const WholeColouring &) = delete;
    WholeColouring &operator=(const WholeColouring &) = delete;

    // Nothing for a text that is empty or all blanks. `step` hears how many parts of a hundred are done.
    std::optional<RtfDocument> Document(const QString &text, const std::function<void(int)> &step) const;

private:
    struct Parts;
    const std::unique_ptr<const Parts> m;
};
