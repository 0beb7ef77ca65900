#include "platform/PropertyListGuard.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace brivane::PropertyList {

namespace {

constexpr qsizetype largestFile = 64 << 20;
constexpr int deepestNesting = 256;
constexpr quint64 mostValues = 4'000'000; // after unfolding
constexpr qsizetype trailerSize = 32;

bool isXmlSafe(QByteArrayView text)
{
    // Comments and character data are not told apart: the count can only come out too high.
    int depth = 0;
    for (qsizetype at = text.indexOf('<'); at >= 0; at = text.indexOf('<', at + 1)) {
        const QByteArrayView tag = text.sliced(at + 1);
        if (tag.startsWith("dict") || tag.startsWith("array"))
            ++depth;
        else if (tag.startsWith("/dict") || tag.startsWith("/array"))
            depth = std::max(depth - 1, 0);
        if (depth > deepestNesting)
            return false;
    }
    // The entities of a document type unfold too.
    return !text.contains("<!ENTITY");
}

quint64 bigEndian(QByteArrayView bytes)
{
    quint64 value = 0;
    for (const char byte : bytes)
        value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

/// The objects of a binary list: which refers to which, and how much each unfolds to.
class BinaryObjects {
public:
    explicit BinaryObjects(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    bool isSafe()
    {
        if (m_bytes.size() < 8 + trailerSize)
            return false;
        const QByteArrayView trailer = m_bytes.last(trailerSize);
        m_offsetWidth = static_cast<unsigned char>(trailer[6]);
        m_referenceWidth = static_cast<unsigned char>(trailer[7]);
        m_count = bigEndian(trailer.sliced(8, 8));
        const quint64 root = bigEndian(trailer.sliced(16, 8));
        m_table = bigEndian(trailer.sliced(24, 8));
        const auto room = static_cast<quint64>(m_bytes.size() - trailerSize);
        if (m_offsetWidth < 1 || m_offsetWidth > 8 || m_referenceWidth < 1 ||
            m_referenceWidth > 8 || root >= m_count || m_table > room ||
            m_count > (room - m_table) / m_offsetWidth)
            return false;
        m_objects.assign(m_count, {});
        return unfold(root, 0);
    }

private:
    /// What an object is with all that it refers to; zero values: not looked at yet.
    struct Unfolded {
        quint64 values = 0;
        int height = 0;
    };
    struct References {
        quint64 at;
        quint64 count;
    };

    /// Where the references of object `index` stand; none when the object is malformed.
    std::optional<References> referencesOf(quint64 index) const
    {
        const auto size = static_cast<quint64>(m_bytes.size() - trailerSize);
        quint64 at = bigEndian(part(m_table + index * m_offsetWidth, m_offsetWidth));
        if (at >= size)
            return {};
        const auto marker = static_cast<unsigned char>(m_bytes[static_cast<qsizetype>(at++)]);
        const int kind = marker >> 4;
        if (kind != 0xA && kind != 0xC && kind != 0xD)
            return References{at, 0};
        quint64 count = marker & 0xF;
        if (count == 0xF) { // the count follows as an integer object
            const int power = at < size ? m_bytes[static_cast<qsizetype>(at)] & 0xF : 0xF;
            const quint64 width = quint64(1) << std::min(power, 4);
            if (power > 3 || size - at < width + 1)
                return {};
            count = bigEndian(part(at + 1, width));
            at += 1 + width;
        }
        if (count > size || (kind == 0xD ? 2 : 1) * count > (size - at) / m_referenceWidth)
            return {};
        return References{at, kind == 0xD ? 2 * count : count};
    }

    /// Sums up what `index` unfolds to. False when it is too deep, too much, malformed or a circle
    /// (which is too deep as well).
    bool unfold(quint64 index, int depth)
    {
        if (index >= m_count || depth > deepestNesting)
            return false;
        if (m_objects[index].values != 0)
            return depth + m_objects[index].height <= deepestNesting;
        const std::optional<References> references = referencesOf(index);
        if (!references)
            return false;
        Unfolded whole{1, 0};
        for (quint64 i = 0; i < references->count; ++i) {
            const quint64 child =
                bigEndian(part(references->at + i * m_referenceWidth, m_referenceWidth));
            if (!unfold(child, depth + 1))
                return false;
            whole.values += m_objects[child].values;
            whole.height = std::max(whole.height, m_objects[child].height + 1);
            if (whole.values > mostValues)
                return false;
        }
        m_objects[index] = whole;
        return true;
    }

    QByteArrayView part(quint64 at, quint64 width) const
    {
        return m_bytes.sliced(static_cast<qsizetype>(at), static_cast<qsizetype>(width));
    }

    QByteArrayView m_bytes;
    quint64 m_offsetWidth = 0;
    quint64 m_referenceWidth = 0;
    quint64 m_count = 0;
    quint64 m_table = 0;
    std::vector<Unfolded> m_objects;
};

} // namespace

bool isSafeToParse(const QByteArray& bytes)
{
    if (bytes.isEmpty() || bytes.size() > largestFile)
        return false;
    return bytes.startsWith("bplist") ? BinaryObjects(bytes).isSafe() : isXmlSafe(bytes);
}

} // namespace brivane::PropertyList
