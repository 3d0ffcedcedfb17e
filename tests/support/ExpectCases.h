#pragma once
// Runs the worked cases of an operation as one test: fails with every case that disagrees, and when there are none.

#include "tests/support/Cases.h"

#include <gtest/gtest.h>

#include <functional>

inline void ExpectCases(const char *op, const std::function<QJsonValue(const QJsonObject &args)> &run,
                        const char *file = cases::kText, double relative = 0)
{
    const cases::Report report = cases::Run(QString::fromUtf8(op), run, file, relative);
    EXPECT_GT(report.ran, 0) << "no case of " << op;
    for (const QString &failure : report.failures)
        ADD_FAILURE() << failure.toStdString();
}
