#pragma once
// The keyword list as the program's windows read it: a disconnected recordset with the one field KW, in the order of
// the file. The colouring reads the same words from gKeywordSet, which is filled beside it. Interface thread.

#include "ado/Recordset.h"
#include <QString>

extern ADODB::RecordsetPtr gKeywords; // from the start of the program to its end

void InitKeywords(); // makes gKeywords, empty and open
// One row for each word of the list of that mode (sqltext/Keywords.h). Nothing raises: a list that cannot be read or
// filled stays as it is.
void LoadKeywords(const QString &mode, const ADODB::RecordsetPtr &list, const QString &folder);
void ReleaseKeywords();
