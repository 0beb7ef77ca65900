#include "core/LineQueue.h"
#include "platform/PathText.h"
#include "scanner/privileged/AdminHelperScript.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <optional>
#include <random>
#include <thread>
#include <tuple>

#include <gtest/gtest.h>

using namespace brivane;
using namespace Qt::StringLiterals;
using AdminHelperScript::EntryDecoder;
using AdminHelperScript::ScanEntry;

namespace {

using Values = std::tuple<QByteArray, QByteArray, quint64, bool, QByteArray>;

QByteArray bytes(std::string_view text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

std::optional<Values> decoded(const QByteArray& line)
{
    EntryDecoder decoder;
    const ScanEntry* entry = decoder.decode({line.constData(), std::size_t(line.size())});
    if (!entry)
        return {};
    return Values(bytes(entry->path), bytes(entry->name), entry->size, entry->isDir,
                  bytes(entry->parentPath));
}

/// The bytes of a text; none when it holds a surrogate that stands for no byte.
std::optional<QByteArray> nameBytes(const QJsonValue& value)
{
    const QString text = value.toString();
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar unit = text[at];
        if (unit.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate())
            ++at;
        else if (unit.isSurrogate() && (unit < QChar(0xDC80) || unit > QChar(0xDCFF)))
            return {};
    }
    return value.isString() ? std::optional(PathText::toBytes(text)) : std::nullopt;
}

/// The general parser lets any character follow a backslash.
bool hasUnknownEscape(const QByteArray& line)
{
    for (qsizetype at = line.indexOf('\\'); at >= 0; at = line.indexOf('\\', at + 2)) {
        if (at + 1 < line.size() && !QByteArray("\"\\/bfnrtu").contains(line[at + 1]))
            return true;
    }
    return false;
}

/// What the general parser makes of a line.
std::optional<Values> naivelyDecoded(const QByteArray& line)
{
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    const auto path = nameBytes(object[u"path"]);
    const auto name = nameBytes(object[u"name"]);
    const auto parentPath = nameBytes(object[u"parentPath"]);
    const QJsonValue size = object[u"size"];
    if (hasUnknownEscape(line) || object.size() != 5 || !path || !name || !parentPath ||
        !object[u"isDir"].isBool() || !size.isDouble() || size.toDouble() < 0 ||
        size.toInteger(-1) < 0)
        return {};
    return Values(*path, *name, quint64(size.toInteger()), object[u"isDir"].toBool(), *parentPath);
}

QByteArray randomLine(std::mt19937& random)
{
    const QByteArray texts[] = {
        "/a/b", R"(tab\tand \" \\ \/)",  R"(\udcff\udc80x)", "caf\xC3\xA9", R"(\ud83d\ude00)",
        "",     R"(\u0001\u00e9\uFFFD)", "\xF0\x9F\x98\x80"};
    const QByteArray sizes[] = {"0", "7", "123456789012", "10"};
    const auto pick = [&](const auto& list) { return list[random() % std::size(list)]; };
    QList<QByteArray> members = {"\"path\":\"" + pick(texts) + '"',
                                 "\"name\":\"" + pick(texts) + '"', "\"size\":" + pick(sizes),
                                 random() % 2 ? "\"isDir\":true" : "\"isDir\":false",
                                 "\"parentPath\":\"" + pick(texts) + '"'};
    if (random() % 2)
        std::ranges::shuffle(members, random);
    QByteArray line = '{' + members.join(random() % 4 ? "," : " ,\t") + '}';
    constexpr std::string_view alphabet = "{}[]\",:\\uct09 af\x80\xC3\xA9";
    for (auto changes = random() % 3; changes > 0; --changes) {
        const auto at = static_cast<qsizetype>(random() % std::size_t(line.size()));
        // Removes nothing, a byte, or all that follows, and puts in a byte or nothing.
        const qsizetype removed[] = {0, 1, 1, line.size()};
        line.replace(at, removed[random() % 4],
                     QByteArray(random() % 2, alphabet[random() % alphabet.size()]));
        if (line.isEmpty())
            break;
    }
    return line;
}

} // namespace

TEST(ScanEntry, LinesWholeOrBrokenReadAsTheGeneralParserReadsThem)
{
    std::mt19937 random(20260101);
    int valid = 0;
    for (int round = 0; round < 60'000; ++round) {
        const QByteArray line = randomLine(random);
        const std::optional<Values> expected = naivelyDecoded(line);
        valid += expected ? 1 : 0;
        ASSERT_EQ(decoded(line), expected) << line.constData();
    }
    EXPECT_GT(valid, 15'000);
    EXPECT_LT(valid, 45'000);
}

TEST(ScanEntry, OnlyExactlyTheFiveMembersMakeAnEntry)
{
    const QByteArray head = R"({"path":"/x","name":"x","isDir":false,"parentPath":"/","size":)";
    const std::pair<QByteArray, bool> rows[] = {
        {head + "18446744073709551615}", true},
        {head + "18446744073709551616}", false},
        {head + "1.5}", false},
        {head + "1e3}", false},
        {head + "01}", false},
        {head + R"(1,"mode":2})", false},
        {head + R"(1,"name":"y"})", false},
    };
    for (const auto& [line, isEntry] : rows)
        EXPECT_EQ(decoded(line).has_value(), isEntry) << line.constData();
}

TEST(LineQueue, LinesComeWholeHoweverTheyAreCutAndNothingAfterACancel)
{
    const QByteArray text = "one\n\ntwo\n" + QByteArray(100'000, 'x') + "\n\n\nlast";
    const std::vector<QByteArray> expected = {"one", "two", QByteArray(100'000, 'x'), "last"};
    for (const int cut : {1, 3, 4, 5, 7, 50'000, 200'000}) {
        LineQueue queue;
        std::thread writer([&] {
            for (qsizetype at = 0; at < text.size(); at += cut)
                queue.append(
                    QByteArrayView(text).sliced(at, std::min<qsizetype>(cut, text.size() - at)));
            queue.close();
        });
        std::vector<QByteArray> lines;
        queue.forEachLine([&](std::string_view line) { lines.push_back(bytes(line)); });
        writer.join();
        EXPECT_EQ(lines, expected) << cut;
    }
    LineQueue queue;
    queue.append("taken\nunfinished");
    int count = 0;
    std::thread canceller([&] { queue.cancel(); });
    queue.forEachLine([&](std::string_view line) { count += line == "unfinished" ? 1 : 0; });
    canceller.join();
    EXPECT_EQ(count, 0);
}
