#include "ado/shape/ShapeParser.h"
#include "ado/shape/ShapeReader.h"
#include "ado/shape/ShapeTypes.h"
#include <optional>

namespace ADODB {

namespace {

constexpr struct
{
    QStringView Word;
    ShapeFigure What;
} figures[] = {
    {u"SUM", ShapeFigure::Sum}, {u"AVG", ShapeFigure::Avg},     {u"MIN", ShapeFigure::Min},
    {u"MAX", ShapeFigure::Max}, {u"COUNT", ShapeFigure::Count}, {u"STDEV", ShapeFigure::StDev},
    {u"ANY", ShapeFigure::Any},
};

constexpr QStringView reserved[] = {u"APPEND", u"COMPUTE", u"BY", u"RELATE", u"TO", u"AS"};

class Parser
{
public:
    explicit Parser(QStringView text) : m_reader(text) {}

    ShapeCommand Whole()
    {
        ShapeCommand command = Command();
        if (!m_reader.AtEnd())
            m_reader.Unexpected(QStringLiteral("the end of the command"));
        return command;
    }

private:
    ShapeCommand Command()
    {
        ShapeCommand command;
        command.Place = m_reader.Here();
        if (!m_reader.TakeWord(u"SHAPE"))
            m_reader.Unexpected(QStringLiteral("SHAPE"));
        if (++m_depth > ShapeDepthLimit)
            m_reader.Fail(command.Place, QStringLiteral("more than %1 levels are nested").arg(ShapeDepthLimit));
        command.Source = Source(true);
        if (m_reader.TakeWord(u"APPEND")) {
            command.Action = ShapeCommand::Append;
            do // the program writes APPEND anew in front of each further relation
                Fields(command);
            while (m_reader.TakeWord(u"APPEND"));
        } else if (command.Source.Kind == ShapeSource::None) {
            m_reader.Unexpected(QStringLiteral("a statement in braces, TABLE or APPEND"));
        } else if (m_reader.TakeWord(u"COMPUTE")) {
            command.Action = ShapeCommand::Compute;
            Fields(command);
            if (m_reader.TakeWord(u"BY"))
                do
                    command.By.push_back(m_reader.NeedName("a field behind BY"));
                while (m_reader.Take(u','));
        }
        --m_depth;
        return command;
    }

    ShapeSource Source(bool mayMiss)
    {
        ShapeSource source;
        source.Place = m_reader.Here();
        if (m_reader.Take(u'{')) {
            source.Kind = ShapeSource::Command;
            source.Text = m_reader.StatementBehindBrace(source.Place);
        } else if (m_reader.Take(u'(')) {
            source.Kind = ShapeSource::Nested;
            source.Shape = std::make_unique<ShapeCommand>(Command());
            m_reader.Need(u')', "that closes the nested shape");
        } else if (m_reader.TakeWord(u"TABLE")) {
            source.Kind = ShapeSource::Table;
            source.Text = m_reader.NeedTable();
        } else if (mayMiss) {
            return source;
        } else {
            m_reader.Unexpected(QStringLiteral("a statement in braces, a nested shape or TABLE"));
        }
        source.Alias = Alias().value_or(ShapeName()).Text;
        return source;
    }

    // [AS] name; a word of the grammar is no name unless AS or quotes stand in front.
    std::optional<ShapeName> Alias()
    {
        if (m_reader.TakeWord(u"AS"))
            return m_reader.NeedName("a name behind AS");
        const QStringView word = m_reader.PeekWord();
        for (QStringView one : reserved)
            if (word.compare(one, Qt::CaseInsensitive) == 0)
                return {};
        if (!m_reader.AtName())
            return {};
        return m_reader.NeedName("a name");
    }

    void Fields(ShapeCommand &command)
    {
        do
            command.Fields.push_back(Field(command));
        while (m_reader.Take(u','));
    }

    ShapeField Field(const ShapeCommand &command)
    {
        ShapeField field;
        field.Place = m_reader.Here();
        if (m_reader.Take(u'(')) {
            Chapter(field);
        } else if (m_reader.TakeWord(u"NEW")) {
            NewField(field);
            return field; // its alias has been read
        } else if (!Figure(field)) {
            if (m_reader.PeekWord().compare(u"CALC", Qt::CaseInsensitive) == 0)
                m_reader.Fail(field.Place, QStringLiteral("CALC is not supported"));
            if (command.Action != ShapeCommand::Compute || !m_reader.AtName())
                m_reader.Unexpected(
                    QStringLiteral("a relation in brackets, a figure (SUM, AVG, MIN, MAX, COUNT, STDEV, "
                                   "ANY) or NEW"));
            field.Kind = ShapeField::Rows;
            field.Path.push_back(m_reader.NeedName("the name of the grouped rows"));
        }
        field.Alias = Alias().value_or(ShapeName()).Text;
        return field;
    }

    void Chapter(ShapeField &field)
    {
        field.Kind = ShapeField::Chapter;
        field.Source = Source(false);
        if (!m_reader.TakeWord(u"RELATE"))
            m_reader.Unexpected(QStringLiteral("RELATE"));
        do {
            ShapePair pair;
            pair.Parent = Related(m_reader.ParentOfRelation());
            if (!m_reader.TakeWord(u"TO"))
                m_reader.Unexpected(QStringLiteral("TO"));
            if (m_reader.PeekWord().compare(u"PARAMETER", Qt::CaseInsensitive) == 0)
                m_reader.Fail(m_reader.Here(), QStringLiteral("PARAMETER is not supported"));
            pair.Child = Related(m_reader.ChildOfRelation());
            field.Pairs.push_back(std::move(pair));
        } while (m_reader.Take(u','));
        m_reader.Need(u')', "that closes the relation");
    }

    // A place that the builder of the command has left open is no field's name.
    ShapeName Related(ShapeName name) const
    {
        if (name.Text.startsWith(QLatin1String("`~DS")) && name.Text.endsWith(QLatin1String("~`")))
            m_reader.Fail(name.Place, QStringLiteral("\"%1\" has not been replaced by a field").arg(name.Text));
        return name;
    }

    bool Figure(ShapeField &field)
    {
        for (const auto &[word, what] : figures) {
            if (!m_reader.TakeWord(word))
                continue;
            field.Kind = ShapeField::Figure;
            field.What = what;
            m_reader.Need(u'(', "behind the figure's name");
            do
                field.Path.push_back(m_reader.NeedName("a chapter's or a field's name"));
            while (m_reader.Take(u'.'));
            m_reader.Need(u')', "that closes the figure");
            return true;
        }
        return false;
    }

    void NewField(ShapeField &field)
    {
        field.Kind = ShapeField::New;
        const ShapePlace place = m_reader.Here();
        const ShapeName type = m_reader.NeedName("a type behind NEW");
        const std::optional<DataTypeEnum> known = ShapeTypeOf(type.Text);
        if (!known)
            m_reader.Fail(place, QStringLiteral("\"%1\" is not the name of a type").arg(type.Text));
        field.Type = *known;
        if (m_reader.Take(u'(')) {
            field.Size = m_reader.NeedNumber("a size");
            if (m_reader.Take(u',')) {
                field.Precision = int(qMin(field.Size, qint64(255)));
                field.Scale = int(qMin(m_reader.NeedNumber("the digits behind the point"), qint64(255)));
                field.Size = 0;
            }
            m_reader.Need(u')', "that closes the size");
        }
        if (m_reader.TakeWord(u"AS"))
            field.Alias = m_reader.AliasOfNew().Text;
        else if (m_reader.AtName())
            field.Alias = m_reader.NeedName("a name").Text;
    }

    ShapeReader m_reader;
    int m_depth = 0;
};

} // namespace

ShapeCommand ParseShape(const QString &text)
{
    return Parser(text).Whole();
}

bool IsShapeCommand(const QString &text)
{
    return ShapeReader(text).TakeWord(u"SHAPE");
}

} // namespace ADODB
