// The text of a PDF file that the toolkit wrote, read back by the fonts' own tables of characters.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QRegularExpression>
#include <QString>
#include <QtEndian>

class PdfText
{
public:
    explicit PdfText(const QByteArray &pdf)
    {
        static const QRegularExpression object(QStringLiteral("(?:^|\\n)(\\d+) 0 obj"));
        const QString text = QString::fromLatin1(pdf); // a byte a character
        for (auto each = object.globalMatch(text); each.hasNext();) {
            const auto match = each.next();
            const qsizetype from = match.capturedEnd(), to = text.indexOf(QLatin1String("endobj"), from);
            m_objects.insert(match.captured(1).toInt(), text.mid(from, to - from));
        }
    }
    // Each run of letters on a line of its own.
    QString Text()
    {
        QString all;
        for (const QString &each : std::as_const(m_objects)) {
            const QString content = Stream(each);
            if (content.contains(QLatin1String(" Tf")))
                all += Shown(content);
        }
        return all;
    }

private:
    static QString Stream(const QString &object)
    {
        qsizetype from = object.indexOf(QLatin1String("stream\n"));
        if (from < 0)
            return {};
        from += 7;
        const QByteArray bytes = object.mid(from, object.lastIndexOf(QLatin1String("endstream")) - from).toLatin1();
        if (!object.left(from).contains(QLatin1String("FlateDecode")))
            return QString::fromLatin1(bytes);
        QByteArray sized(4, '\0'); // how long it becomes is not known: a guess is enough
        qToBigEndian(quint32(bytes.size() * 20), sized.data());
        return QString::fromLatin1(qUncompress(sized + bytes));
    }
    QHash<QString, QString> LettersOf(int font)
    {
        static const QRegularExpression table(QStringLiteral("/ToUnicode (\\d+) 0 R"));
        static const QRegularExpression range(
            QStringLiteral("<([0-9a-fA-F]{4})> ?<([0-9a-fA-F]{4})> ?(\\[[^\\]]*\\]|<[0-9a-fA-F]{4,}>)"));
        static const QRegularExpression code(QStringLiteral("<([0-9a-fA-F]{4,})>"));
        QHash<QString, QString> letters;
        const QString map = Stream(m_objects.value(table.match(m_objects.value(font)).captured(1).toInt()));
        for (auto each = range.globalMatch(map); each.hasNext();) {
            const auto match = each.next();
            int glyph = match.captured(1).toInt(nullptr, 16);
            const bool listed = match.captured(3).startsWith(u'[');
            QList<int> codes;
            for (auto one = code.globalMatch(match.captured(3)); one.hasNext();)
                codes << one.next().captured(1).left(4).toInt(nullptr, 16);
            for (int i = 0; glyph <= match.captured(2).toInt(nullptr, 16); ++glyph, ++i)
                letters.insert(QStringLiteral("%1").arg(glyph, 4, 16, QLatin1Char('0')),
                               QChar(listed ? codes.value(i) : codes.value(0) + i));
        }
        return letters;
    }
    QString Shown(const QString &content)
    {
        static const QRegularExpression token(QStringLiteral("/F(\\d+) [\\d.-]+ Tf|<([0-9a-fA-F]+)>|\\bET\\b"));
        QHash<QString, QString> letters;
        QString shown;
        for (auto each = token.globalMatch(content); each.hasNext();) {
            const auto match = each.next();
            if (!match.captured(1).isEmpty())
                letters = LettersOf(match.captured(1).toInt());
            else if (match.captured(2).isEmpty())
                shown += u'\n';
            for (qsizetype at = 0; at + 4 <= match.captured(2).size(); at += 4)
                shown += letters.value(match.captured(2).mid(at, 4).toLower());
        }
        return shown;
    }
    QHash<int, QString> m_objects;
};
