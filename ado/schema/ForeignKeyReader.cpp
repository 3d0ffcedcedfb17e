#include "ado/schema/ForeignKeyReader.h"
#include "ado/schema/SqlWalker.h"

#include <utility>

namespace ADODB {

std::vector<ForeignKey> ReadForeignKeys(const QString &createTable)
{
    std::vector<ForeignKey> keys;
    SqlWalker walker{createTable};
    QString name;       // of the constraint that comes next
    bool inKey = false; // behind the REFERENCES of the last key
    bool negated = false, deferrable = false;
    int depth = 0;
    while (walker.StepOverBlanks() != SqlWalker::End) {
        if (walker.IsSign(u'('))
            ++depth;
        else if (walker.IsSign(u')'))
            --depth;
        if (depth != 1 || walker.Found == SqlWalker::Quoted)
            continue;
        const bool wasNegated = std::exchange(negated, walker.Is(u"NOT"));
        if (walker.IsSign(u',')) {
            name.clear();
            inKey = false;
        } else if (walker.Is(u"CONSTRAINT")) {
            name = walker.StepOverBlanks() == SqlWalker::Word || walker.Found == SqlWalker::Quoted ? walker.Name()
                                                                                                   : QString();
            inKey = false;
        } else if (walker.Is(u"REFERENCES")) {
            keys.push_back({std::exchange(name, QString()), Deferral::NotDeferrable});
            inKey = true;
            deferrable = false;
        } else if (inKey && walker.Is(u"DEFERRABLE")) {
            deferrable = !wasNegated;
            keys.back().When = deferrable ? Deferral::InitiallyImmediate : Deferral::NotDeferrable;
        } else if (inKey && deferrable && walker.Is(u"DEFERRED")) { // behind INITIALLY
            keys.back().When = Deferral::InitiallyDeferred;
        } else if (walker.Is(u"PRIMARY") || walker.Is(u"UNIQUE") || walker.Is(u"CHECK") || walker.Is(u"NOT") ||
                   walker.Is(u"DEFAULT") || walker.Is(u"COLLATE") || walker.Is(u"GENERATED")) {
            name.clear(); // it was the name of this one
        }
    }
    return keys;
}

} // namespace ADODB
