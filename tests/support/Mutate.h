#pragma once
// Feeds a fuzz target without a fuzzer: seeds, changed at random, for a given time. Always the same sequence of inputs;
// how far it gets depends on the machine.

#include <QByteArray>
#include <QByteArrayList>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace mutate {

inline QByteArray Changed(QRandomGenerator &random, QByteArray bytes, const QByteArrayList &seeds)
{
    const int changes = 1 + random.bounded(8);
    for (int i = 0; i < changes; ++i) {
        const qsizetype at = random.bounded(int(bytes.size()) + 1);
        const qsizetype length = random.bounded(12);
        switch (random.bounded(7)) {
        case 0:
            bytes.insert(at, char(random.bounded(256)));
            break;
        case 1:
            bytes.remove(at, length);
            break;
        case 2:
            bytes.insert(at, bytes.mid(random.bounded(int(bytes.size()) + 1), length));
            break;
        case 3: {
            const QByteArray &other = seeds[random.bounded(int(seeds.size()))];
            bytes.insert(at, other.mid(random.bounded(int(other.size()) + 1), 4 * length));
            break;
        }
        case 4:
            if (at < bytes.size())
                bytes[at] = char(bytes[at] ^ (1 << random.bounded(8)));
            break;
        case 5:
            bytes.insert(at, "\\{}\r\n'\"-[] \t*;0"[random.bounded(15)]);
            break;
        case 6:
            bytes.truncate(qMax<qsizetype>(at, 1));
            break;
        }
    }
    return bytes.left(4096);
}

// `target` says what is wrong, or nothing. Stops at the first fault.
inline void Feed(const QByteArrayList &seeds, int milliseconds, const std::function<std::string(QByteArray)> &target)
{
    QRandomGenerator random(7);
    QElapsedTimer clock;
    clock.start();
    int fed = 0;
    QByteArrayList pool = seeds;
    while (fed < seeds.size() || clock.elapsed() < milliseconds) {
        const QByteArray input =
            fed < seeds.size() ? seeds[fed] : Changed(random, pool[random.bounded(int(pool.size()))], seeds);
        ++fed;
        const std::string fault = target(input);
        ASSERT_TRUE(fault.empty()) << fault << "\ninput: " << input.toHex().toStdString();
        // Some offspring stay, so that changes pile up.
        if (random.bounded(16) == 0)
            pool.size() < 500 ? pool.append(input) : void(pool[random.bounded(500)] = input);
    }
    testing::Test::RecordProperty("inputs", fed);
    EXPECT_GT(fed, 100);
}

} // namespace mutate
