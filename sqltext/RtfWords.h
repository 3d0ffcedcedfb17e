#pragma once
// The control words and signs that the RTF reader knows. Used by the reader alone.

#include <QStringView>

// Where the text of a group goes.
enum class RtfDestination
{
    Text,
    Fonts,
    Colours,
    Skipped
};

struct RtfWord
{
    enum Kind
    {
        Unknown,
        Colour,
        Bold,
        Italic,
        Plain,
        Paragraph,
        Line,
        Character, // stands for `character`
        Unicode,
        Fallback,
        Binary,
        DefaultFont,
        Font,
        FontSize,
        Destination, // the group's text goes to `destination`
    };
    Kind kind = Unknown;
    char16_t character = 0;
    RtfDestination destination = RtfDestination::Text;
};

RtfWord FindRtfWord(QStringView word);

// The character that backslash and a sign stand for, 0 when they stand for nothing.
char16_t RtfSign(char16_t sign);

// The character of a byte in the code page that the head names.
char16_t Windows1252(int byte);
