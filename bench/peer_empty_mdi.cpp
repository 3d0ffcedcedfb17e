// An empty program with one editor in a multi-document window: starts, paints once, ends.
#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTimer>

namespace {

class Window : public QMainWindow
{
protected:
    void paintEvent(QPaintEvent *event) override
    {
        QMainWindow::paintEvent(event);
        QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
    }
};

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    Window window;
    auto *area = new QMdiArea;
    window.setCentralWidget(area);
    window.menuBar()->addMenu("File")->addAction("Exit");
    area->addSubWindow(new QPlainTextEdit)->show();
    window.showMaximized(); // as the first start of ours
    return QApplication::exec();
}
