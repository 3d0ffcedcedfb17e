#include "frame/QueryFile.h"

#include "session/Pump.h"
#include "session/Status.h"
#include <QFile>
#include <QFileInfo>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <memory>

namespace {

constexpr qint64 kBlock = 1 << 20;
constexpr int kTellMs = 150; // a short reading says nothing

// One reading, shared with its thread: the user may leave that behind on a disk that does not answer.
struct Reading
{
    QString path, text, why;
    std::atomic<bool> givenUp = false;
    std::atomic<int> percent = 0;
    bool read = false;

    void Run();
};

void Reading::Run()
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        why = QStringLiteral("It is not a file."); // a folder, or what would be read without an end
        return;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        why = file.errorString();
        return;
    }
    const qint64 size = file.size();
    QByteArray bytes;
    bool plain = true;
    while (plain && !givenUp && bytes.size() <= QueryFileLimit && size <= QueryFileLimit) {
        const QByteArray block = file.read(kBlock);
        if (file.error() != QFileDevice::NoError) {
            why = file.errorString();
            return;
        }
        if (block.isEmpty())
            break;
        plain = !block.contains('\0');
        bytes += block;
        percent = int(std::min<qint64>(99, bytes.size() * 100 / std::max<qint64>(1, size)));
    }
    if (!plain) {
        why = QStringLiteral("It is not a text file.");
    } else if (size > QueryFileLimit || bytes.size() > QueryFileLimit) {
        why = QStringLiteral("It is too large for the editor: %1 bytes, and it takes %2 at most.")
                  .arg(std::max<qint64>(size, bytes.size()))
                  .arg(QueryFileLimit);
    } else {
        text = DecodeQueryFile(bytes);
        read = true;
    }
}

} // namespace

bool ReadQueryFile(const QString &path, QString &text, QString &why)
{
    const auto reading = std::make_shared<Reading>();
    reading->path = path;
    const QString before = LastStatus();
    QString said;
    QTimer tell;
    QObject::connect(&tell, &QTimer::timeout, &tell, [&] {
        said = QStringLiteral("Reading %1 ... %2 % (Esc stops)").arg(QFileInfo(path).fileName()).arg(reading->percent);
        SetStatus(said);
    });
    tell.start(kTellMs);
    bool ended = false;
    try {
        ended = RunAbandonable(QString(), [reading] { reading->Run(); });
        why = ended ? reading->why : QString();
    } catch (const std::exception &) {
        why = QStringLiteral("There is not enough memory to read it.");
    }
    reading->givenUp = true;
    if (!said.isEmpty() && LastStatus() == said)
        SetStatus(before);
    if (!ended || !reading->read)
        return false;
    text = reading->text;
    return true;
}
