#pragma once
// The undo store of an editor: a fixed stack of ten snapshots of the whole RTF text with its selection. Window-free;
// one thread at a time; nothing raises, an empty pointer stands for "no entry".
//
// An entry is a record of three texts: Key the RTF, ColorDef SelStart and Code SelLength in decimal. Entries are shared
// objects that later additions may overwrite, so a caller copies what it wants to keep.

#include "sqltext/clsColorTable.h"

#include <array>
#include <memory>

class clsStringHistory
{
public:
    using Entry = std::shared_ptr<clsColorCell>;

    // A new newest snapshot; it ends the redo chain. When the stack is full each slot takes the entry above it, so the
    // two newest slots then are one entry, which the new snapshot overwrites: one older state is lost, and each further
    // addition makes one more slot point to that shared entry.
    void AddChange(const QString &text, qsizetype selStart, qsizetype selLength);
    bool CanUndo() const { return m_Current >= 0; }
    bool CanRedo() const;
    // The newest entry, and one step down.
    Entry GetUndo();
    // The entry that the stack points to, and one step up. Directly after an undo this is the entry below the one
    // undone.
    Entry GetRedo();

private:
    static constexpr int Last = 9;
    std::array<Entry, Last + 1> m_Entries;
    int m_Current = -1;
};
