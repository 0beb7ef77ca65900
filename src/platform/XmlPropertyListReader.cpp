#include "platform/PropertyList.h"
#include "platform/XmlPropertyList.h"
#include "platform/XmlPropertyListGuard.h"
#include "platform/XmlUnit.h"

#include <QDateTime>
#include <QXmlStreamReader>

#include <charconv>
#include <cstdlib>
#include <limits>

namespace brivane::PropertyList {

namespace {

/// The number that `text` is, all of it; none when it is none or out of range.
template<typename Number, typename... Form>
std::optional<Number> numberIn(QByteArrayView text, Form... form)
{
    Number number = {};
    const auto [end, error] = std::from_chars(text.begin(), text.end(), number, form...);
    return error == std::errc() && end == text.end() ? std::optional(number) : std::nullopt;
}

// Each gives the invalid value for what is not of its kind.

/// Decimal, or hexadecimal with 0x before it.
QVariant integerOf(QByteArrayView text)
{
    const bool isNegative = text.startsWith('-');
    QByteArrayView digits = text.sliced(isNegative || text.startsWith('+') ? 1 : 0);
    const bool isHexadecimal = digits.startsWith("0x") || digits.startsWith("0X");
    if (isHexadecimal)
        digits = digits.sliced(2);
    const auto size = numberIn<quint64>(digits, isHexadecimal ? 16 : 10);
    if (!size)
        return {};
    constexpr quint64 most = std::numeric_limits<qint64>::max();
    if (isNegative)
        return *size <= most + 1 ? QVariant(static_cast<qint64>(~*size + 1)) : QVariant();
    return *size <= most ? QVariant(static_cast<qint64>(*size)) : QVariant(*size);
}

QVariant realOf(QByteArrayView text)
{
    const bool hasPlus = text.startsWith('+') && !text.startsWith("+-");
    const auto number = numberIn<double>(text.sliced(hasPlus ? 1 : 0));
    return number ? QVariant(*number) : QVariant();
}

/// 2001-01-01T00:00:00Z; a year may have more digits, and be negative.
QVariant dateOf(QByteArrayView text)
{
    constexpr QByteArrayView separators = "--T::";
    constexpr qsizetype sizeOfRest = 16; // from the month on
    constexpr int farthest = 300'000'000;
    if (text.size() < 4 + sizeOfRest || !text.endsWith('Z'))
        return {};
    const auto year = numberIn<int>(text.chopped(sizeOfRest));
    int fields[5] = {};
    for (qsizetype i = 0; i < 5; ++i) {
        const QByteArrayView part = text.last(sizeOfRest).sliced(3 * i, 3);
        const auto field = numberIn<uint>(part.sliced(1));
        if (part.front() != separators[i] || !field)
            return {};
        fields[i] = static_cast<int>(*field);
    }
    if (!year || std::abs(*year) > farthest)
        return {};
    // In the format a year 0 comes before the year 1.
    const QDateTime date(QDate(*year > 0 ? *year : *year - 1, fields[0], fields[1]),
                         QTime(fields[2], fields[3], fields[4]), Qt::UTC);
    return date.isValid() ? QVariant(date) : QVariant();
}

QVariant dataOf(QByteArray text)
{
    text.removeIf(
        [](char byte) { return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n'; });
    const auto data = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    return data ? QVariant(*data) : QVariant();
}

/// Reads the elements of a list. What is malformed becomes an error of the parser, which then ends.
class Reader {
public:
    explicit Reader(const QByteArray& xml)
        : m_xml(xml)
    {
        m_xml.setNamespaceProcessing(false);
    }

    std::optional<QVariant> list();

private:
    /// Goes on to the next element; false at the end of the one around it.
    bool findElement();
    /// The value of the element that was found. This and the next ones go on to its end.
    QVariant value(int depth);
    QVariantMap map(int depth);
    QVariantList array(int depth);
    QVariant scalar(const QString& name);
    QString text();
    void fail() { m_xml.raiseError(); }

    QXmlStreamReader m_xml;
    qsizetype m_values = 0;
};

std::optional<QVariant> Reader::list()
{
    QVariant root;
    if (findElement()) {
        const bool isWrapped = m_xml.name() == u"plist";
        if (!isWrapped || findElement())
            root = value(0);
        if (isWrapped && findElement())
            fail();
    }
    while (!m_xml.atEnd())
        m_xml.readNext();
    return root.isValid() && !m_xml.hasError() ? std::optional(root) : std::nullopt;
}

bool Reader::findElement()
{
    for (;;) {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartElement:
            return true;
        case QXmlStreamReader::StartDocument: {
            const QStringView encoding = m_xml.documentEncoding();
            if (!encoding.isEmpty() && encoding.compare(u"UTF-8", Qt::CaseInsensitive) != 0)
                fail();
            break;
        }
        case QXmlStreamReader::Characters:
            if (!m_xml.isWhitespace())
                fail();
            break;
        case QXmlStreamReader::Comment:
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::ProcessingInstruction:
            break;
        case QXmlStreamReader::EntityReference:
            fail();
            break;
        default:
            return false;
        }
    }
}

QVariant Reader::value(int depth)
{
    const QString name = m_xml.name().toString();
    const bool isMap = name == u"dict";
    const bool isScalar = !isMap && name != u"array";
    if (++m_values > mostValues || (!isScalar && depth >= deepestNesting)) {
        fail();
        return {};
    }
    if (isScalar)
        return scalar(name);
    return isMap ? QVariant(map(depth)) : QVariant(array(depth));
}

QVariantMap Reader::map(int depth)
{
    QVariantMap map;
    while (findElement()) {
        if (m_xml.name() != u"key")
            fail();
        const QString key = text();
        if (findElement())
            map.insert(key, value(depth + 1));
        else
            fail();
    }
    return map;
}

QVariantList Reader::array(int depth)
{
    QVariantList list;
    while (findElement())
        list.append(value(depth + 1));
    return list;
}

QVariant Reader::scalar(const QString& name)
{
    const QString text = this->text();
    if (name == u"string")
        return text;
    const QByteArray bytes = text.toUtf8().trimmed();
    QVariant value;
    if (name == u"true" || name == u"false")
        value = bytes.isEmpty() ? QVariant(name == u"true") : QVariant();
    else if (name == u"integer")
        value = integerOf(bytes);
    else if (name == u"real")
        value = realOf(bytes);
    else if (name == u"date")
        value = dateOf(bytes);
    else if (name == u"data")
        value = dataOf(bytes);
    if (!value.isValid())
        fail();
    return value;
}

QString Reader::text()
{
    QString text;
    for (;;) {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::Characters:
            text += m_xml.text();
            break;
        case QXmlStreamReader::Comment:
            break;
        case QXmlStreamReader::ProcessingInstruction:
            if (m_xml.processingInstructionTarget() == unitTarget) {
                const QByteArray digits = m_xml.processingInstructionData().toLatin1();
                const auto unit = numberIn<quint16>(digits, 16);
                text += QChar(unit.value_or(0));
                if (!unit)
                    fail();
            }
            break;
        case QXmlStreamReader::EndElement:
            return text;
        default:
            fail();
            return {};
        }
    }
}

} // namespace

std::optional<QVariant> readXml(const QByteArray& bytes)
{
    const std::optional<QByteArray> xml = guardedXml(bytes);
    return xml ? Reader(*xml).list() : std::nullopt;
}

} // namespace brivane::PropertyList
