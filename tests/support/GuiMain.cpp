// The entry of test programs whose room has widgets. Without a named platform the windows are drawn off-screen.
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Brindlewick"));
    return RUN_ALL_TESTS();
}
