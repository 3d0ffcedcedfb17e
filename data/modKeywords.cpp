#include "data/modKeywords.h"
#include "controls/Attempt.h"
#include "session/Status.h"
#include "sqltext/Keywords.h"

ADODB::RecordsetPtr gKeywords;

void InitKeywords()
{
    SetStatus(QStringLiteral("Initializing Keywords ..."));
    ClearKeywordSet();
    gKeywords = ADODB::Recordset::Create();
    gKeywords->Fields().Append(QStringLiteral("KW"), ADODB::adVarChar, 50, ADODB::adFldUnspecified);
    gKeywords->Open();
}

void LoadKeywords(const QString &mode, const ADODB::RecordsetPtr &list, const QString &folder)
{
    KeywordSet words;
    LoadKeywords(mode, words, folder);
    Attempt([&] {
        for (const QString &word : words.Words()) {
            list->AddNew();
            list->Fields()[0].SetValue(word);
            list->Update();
            if (list == gKeywords)
                gKeywordSet.Append(word);
        }
    });
}

void ReleaseKeywords()
{
    gKeywords.reset();
    ClearKeywordSet();
}
