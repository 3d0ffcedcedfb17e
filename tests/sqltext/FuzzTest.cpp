// A short run of the fuzz targets of this room; scripts/fuzz runs them for long.
#include "fuzz/BracesTarget.h"
#include "fuzz/ColourTarget.h"
#include "fuzz/RtfTarget.h"
#include "fuzz/StatementsTarget.h"
#include "tests/support/Mutate.h"

namespace {

const QByteArray kEven(1, '\2'); // announces UTF-8

TEST(Fuzz, Rtf)
{
    QByteArrayList seeds;
    for (const char *seed :
         {"{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\fnil\\fcharset0 Courier New;}}\r\n"
          "{\\colortbl \\red145\\green195\\blue125;\\red125\\green145\\Blue195\\;\\red155\\green125\\blue195;}\r\n"
          "\\viewkind4\\uc1\\pard\\f0\\fs17 \\cf0 \\cf1 select\\cf0  \\cf3 'a--b'\\cf0  \\i[t]\\i0 \\cf4 -- x\\cf0 }",
          "{\\rtf1{\\*\\generator x;}{\\info{\\title y}}\\b a\\b0\\par\\u1078?\\'e4\\tab\\line\\~\\plain\\par }",
          "{\\rtf1\\uc2\\u-10179 ??\\u-8704\\'41\\'42{\\uc0\\u8364 x}\\bin3 abc{\\pict 00}}}}", "plain \\b text {",
          "{\\rtf"})
        seeds += kEven + seed;
    mutate::Feed(seeds, 3'000, fuzz::Rtf);
}

TEST(Fuzz, Colour)
{
    QByteArrayList seeds;
    for (const QByteArray &keywords : {QByteArray("SELECT\r\nFROM\r\nOR\r\nORDER BY\r\nBY\r\nELSE\r\nTEXT\r\nIN\r\n"),
                                       QByteArray("a\nab\naba\n \n\ncf1\n0\n\\\n"), QByteArray()})
        for (const char *text :
             {"select 'a--b' from [t] -- x\r\norder by \"q\" or elselse texttext ininin", "'it''s'\r\n-- 'a--b' x\r\n",
              "\\cf1 select\\CF0 {a}\tselectselect [a]1 --\r\n", "a ab aba abab aab,b(a)a\r\n"})
            seeds += keywords + '\0' + kEven + text;
    mutate::Feed(seeds, 4'000, fuzz::Colour);
}

TEST(Fuzz, Statements)
{
    QByteArrayList seeds;
    for (const char *seed : {"select 1\r\n\r\nupdate t set a = 'x  y'\r\n \r\ndelete\r\nGO\r\n  \r\n\r\n\r\n",
                             " \r\n\r\n \r\n", "a \r\n \r\nb\n\nc\r\rd", "Drop\r\n\r\nInsert (Create)", ""})
        seeds += QByteArray("\x07\0", 2) + kEven + seed;
    mutate::Feed(seeds, 2'000, fuzz::Statements);
}

TEST(Fuzz, Braces)
{
    QByteArrayList seeds;
    for (int kind = 0; kind < 6; ++kind)
        for (const char *seed :
             {"((a) [b] {c} 'd' \"e\")", ")(", "))((", "{\\rtf1 {\\fonttbl{\\f0 x;}}\\par ('[{\"}]')}", ""})
            seeds += QByteArray(1, char(kind)) + kEven + seed;
    mutate::Feed(seeds, 2'000, fuzz::Braces);
}

} // namespace
