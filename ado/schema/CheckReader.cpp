#include "ado/schema/CheckReader.h"
#include "ado/schema/SqlWalker.h"

namespace ADODB {

namespace {

QString WithoutOuterBlanks(QStringView text)
{
    while (!text.isEmpty() && SqlWalker::IsBlank(text.front()))
        text = text.mid(1);
    while (!text.isEmpty() && SqlWalker::IsBlank(text.back()))
        text.chop(1);
    return text.toString();
}

} // namespace

std::vector<Check> ReadChecks(const QString &table, const QString &createTable)
{
    std::vector<Check> checks;
    SqlWalker walker{createTable};
    QString name; // of the constraint that comes next
    int depth = 0;
    while (walker.StepOverBlanks() != SqlWalker::End) {
        if (walker.IsSign(u'('))
            ++depth;
        else if (walker.IsSign(u')'))
            --depth;
        if (depth != 1 || walker.Found == SqlWalker::Quoted)
            continue;
        if (walker.IsSign(u',')) {
            name.clear();
        } else if (walker.Is(u"CONSTRAINT")) {
            const SqlWalker::Kind kind = walker.StepOverBlanks();
            name = kind == SqlWalker::Word || kind == SqlWalker::Quoted ? walker.Name() : QString();
        } else if (walker.Is(u"CHECK")) {
            if (walker.StepOverBlanks() != SqlWalker::Sign || !walker.IsSign(u'('))
                break;
            const qsizetype from = walker.Next;
            for (int inner = 1; inner > 0 && walker.Step() != SqlWalker::End;)
                inner += walker.IsSign(u'(') ? 1 : walker.IsSign(u')') ? -1 : 0;
            if (walker.Found == SqlWalker::End)
                break;
            if (name.isEmpty())
                name = QStringLiteral("CK_%1_%2").arg(table).arg(checks.size() + 1);
            checks.push_back({name, WithoutOuterBlanks(QStringView(createTable).mid(from, walker.Start - from))});
            name.clear();
        } else if (walker.Is(u"PRIMARY") || walker.Is(u"UNIQUE") || walker.Is(u"FOREIGN") || walker.Is(u"REFERENCES") ||
                   walker.Is(u"NOT") || walker.Is(u"DEFAULT") || walker.Is(u"COLLATE")) {
            name.clear(); // it was the name of this one
        }
    }
    return checks;
}

} // namespace ADODB
