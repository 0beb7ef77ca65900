#include "platform/PropertyList.h"
#include "platform/XmlPropertyList.h"
#include "platform/XmlUnit.h"

#include <QDateTime>

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace brivane::PropertyList {

namespace {

QByteArray realText(double number)
{
    if (!std::isfinite(number))
        return std::isnan(number) ? "nan" : number > 0 ? "+infinity" : "-infinity";
    char digits[32]; // the fewest that give the number back
    const auto [end, error] = std::to_chars(std::begin(digits), std::end(digits), number);
    return QByteArray(digits, end - digits);
}

/// None for the first second that a QDateTime tells in part only.
std::optional<QByteArray> dateText(const QDateTime& value)
{
    const QDateTime utc = value.toUTC();
    const QDate date = utc.date();
    const QTime time(utc.time().hour(), utc.time().minute(), utc.time().second());
    if (!QDateTime(date, time, Qt::UTC).isValid())
        return {};
    // In the format a year 0 comes before the year 1.
    const int year = date.year() > 0 ? date.year() : date.year() + 1;
    return QString::asprintf("%s%04d-%02d-%02dT%02d:%02d:%02dZ", year < 0 ? "-" : "",
                             std::abs(year), date.month(), date.day(), time.hour(), time.minute(),
                             time.second())
        .toLatin1();
}

/// `text` between two tags. Ends early when it becomes larger than a file may be.
QByteArray escaped(QStringView text)
{
    QByteArray bytes;
    qsizetype escapedUpTo = 0;
    const auto replace = [&](qsizetype at, QByteArrayView replacement) {
        bytes += text.sliced(escapedUpTo, at - escapedUpTo).toUtf8();
        bytes += replacement;
        escapedUpTo = at + 1;
    };
    for (qsizetype at = 0; at < text.size() && bytes.size() <= largestFile; ++at) {
        const QChar unit = text[at];
        if (unit.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate())
            ++at;
        else if (unit == u'&')
            replace(at, "&amp;");
        else if (unit == u'<')
            replace(at, "&lt;");
        else if (unit == u'>')
            replace(at, "&gt;");
        else if (unit == u'\r') // as it stands, it would be read as a new line
            replace(at, "&#13;");
        else if (isFormless(unit.unicode()))
            replace(at, instructionFor(unit.unicode()));
    }
    return bytes + text.sliced(escapedUpTo).toUtf8();
}

class Writer {
public:
    /// Adds `value` in `depth` containers. False when it has no form, or there is no room.
    bool add(const QVariant& value, int depth);
    void addLine(const QByteArray& line, int depth)
    {
        m_bytes += QByteArray(depth, '\t') + line + '\n';
    }
    [[nodiscard]] const QByteArray& bytes() const { return m_bytes; }

private:
    bool addMap(const QVariantMap& map, int depth);
    bool addList(const QVariantList& list, int depth);

    QByteArray m_bytes;
};

bool Writer::addMap(const QVariantMap& map, int depth)
{
    addLine("<dict>", depth);
    for (auto item = map.begin(); item != map.end(); ++item) {
        addLine("<key>" + escaped(item.key()) + "</key>", depth + 1);
        if (!add(item.value(), depth + 1))
            return false;
    }
    addLine("</dict>", depth);
    return true;
}

bool Writer::addList(const QVariantList& list, int depth)
{
    addLine("<array>", depth);
    for (const QVariant& item : list) {
        if (!add(item, depth + 1))
            return false;
    }
    addLine("</array>", depth);
    return true;
}

bool Writer::add(const QVariant& value, int depth)
{
    if (m_bytes.size() > largestFile)
        return false;
    switch (value.typeId()) {
    case QMetaType::QVariantMap:
        return addMap(value.toMap(), depth);
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return addList(value.toList(), depth);
    case QMetaType::Bool:
        addLine(value.toBool() ? "<true/>" : "<false/>", depth);
        return true;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        addLine("<integer>" + value.toByteArray() + "</integer>", depth);
        return true;
    case QMetaType::Double:
        addLine("<real>" + realText(value.toDouble()) + "</real>", depth);
        return true;
    case QMetaType::QString:
        addLine("<string>" + escaped(value.toString()) + "</string>", depth);
        return true;
    case QMetaType::QByteArray:
        addLine("<data>" + value.toByteArray().toBase64() + "</data>", depth);
        return true;
    case QMetaType::QDateTime: {
        const std::optional<QByteArray> text = dateText(value.toDateTime());
        if (text)
            addLine("<date>" + *text + "</date>", depth);
        return text.has_value();
    }
    default:
        return false;
    }
}

} // namespace

std::optional<QByteArray> writeXml(const QVariant& value)
{
    Writer writer;
    writer.addLine("<?xml version=\"1.0\" encoding=\"UTF-8\"?>", 0);
    writer.addLine("<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                   "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">",
                   0);
    writer.addLine("<plist version=\"1.0\">", 0);
    if (!writer.add(value, 0))
        return {};
    writer.addLine("</plist>", 0);
    return writer.bytes();
}

} // namespace brivane::PropertyList
