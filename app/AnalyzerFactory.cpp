#include "app/AnalyzerFactory.h"

AnalyzerFactory &AnalyzerFactory::Current()
{
    static AnalyzerFactory s_factory;
    return s_factory;
}
