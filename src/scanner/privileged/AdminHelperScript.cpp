#include "scanner/privileged/AdminHelperScript.h"

#include <QByteArrayView>
#include <QFile>

#include <algorithm>
#include <charconv>
#include <optional>

using namespace Qt::StringLiterals;

// The resource lies in a static library, from which the linker takes only what is asked for.
static void initializeResource()
{
    Q_INIT_RESOURCE(brivane_admin_helper);
}

namespace brivane::AdminHelperScript {

QByteArray sourceText()
{
    initializeResource();
    QFile file(u":/brivane/AdminHelper.cpp"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

namespace {

/// What is left of a line. Its functions take what they are named after from the front, or fail.
class Rest {
public:
    explicit Rest(std::string_view line)
        : m_text(line)
    {
    }

    bool takeSign(char sign)
    {
        skipBlanks();
        return take(sign);
    }

    /// `scratch` holds the text when it is not in the line as it stands.
    bool takeText(std::string& scratch, std::string_view& text)
    {
        if (!takeSign('"'))
            return false;
        const std::size_t plain = plainLength();
        if (plain < m_text.size() && m_text[plain] == '"') {
            text = m_text.substr(0, plain);
            m_text.remove_prefix(plain + 1);
            return isUtf8(text);
        }
        scratch.clear();
        while (!take('"')) {
            const std::size_t length = plainLength();
            if (!isUtf8(m_text.substr(0, length)))
                return false;
            scratch.append(m_text, 0, length);
            m_text.remove_prefix(length);
            if (!m_text.starts_with('"') && !takeEscape(scratch))
                return false;
        }
        text = scratch;
        return true;
    }

    bool takeSize(std::uint64_t& size)
    {
        skipBlanks();
        const char* begin = m_text.data();
        const auto [end, error] = std::from_chars(begin, begin + m_text.size(), size);
        const auto length = static_cast<std::size_t>(end - begin);
        const bool hasZeroInFront = length > 1 && *begin == '0';
        if (error != std::errc() || hasZeroInFront)
            return false;
        m_text.remove_prefix(length);
        return true;
    }

    bool takeTruth(bool& value)
    {
        skipBlanks();
        value = m_text.starts_with("true");
        const std::string_view word = value ? "true" : "false";
        const bool isThere = m_text.starts_with(word);
        m_text.remove_prefix(isThere ? word.size() : 0);
        return isThere;
    }

    bool isEmpty()
    {
        skipBlanks();
        return m_text.empty();
    }

private:
    void skipBlanks()
    {
        const std::size_t end = m_text.find_first_not_of(" \t\r\n");
        m_text.remove_prefix(std::min(end, m_text.size()));
    }

    bool take(char c)
    {
        const bool isThere = m_text.starts_with(c);
        m_text.remove_prefix(isThere ? 1 : 0);
        return isThere;
    }

    /// How many characters there are before the end of the text, an escape or a control character.
    [[nodiscard]] std::size_t plainLength() const
    {
        std::size_t length = 0;
        while (length < m_text.size() && m_text[length] != '"' && m_text[length] != '\\' &&
               static_cast<unsigned char>(m_text[length]) >= 0x20)
            ++length;
        return length;
    }

    static bool isUtf8(std::string_view text)
    {
        return QByteArrayView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8();
    }

    bool takeEscape(std::string& text)
    {
        if (!take('\\') || m_text.empty())
            return false;
        const char kind = m_text.front();
        m_text.remove_prefix(1);
        if (kind == 'u')
            return takeCodePoint(text);
        constexpr std::string_view kinds = "\"\\/bfnrt";
        constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
        const std::size_t at = kinds.find(kind);
        if (at != std::string_view::npos)
            text += meanings[at];
        return at != std::string_view::npos;
    }

    std::optional<char16_t> takeHex()
    {
        std::uint16_t value = 0;
        const char* begin = m_text.data();
        if (m_text.size() < 4)
            return {};
        const auto [end, error] = std::from_chars(begin, begin + 4, value, 16);
        if (error != std::errc() || end != begin + 4)
            return {};
        m_text.remove_prefix(4);
        return char16_t{value};
    }

    bool takeCodePoint(std::string& text)
    {
        const std::optional<char16_t> unit = takeHex();
        if (!unit)
            return false;
        if (QChar::isLowSurrogate(*unit)) {
            text += static_cast<char>(*unit & 0xFF);
            return *unit >= 0xDC80 && *unit <= 0xDCFF;
        }
        char32_t character = *unit;
        if (QChar::isHighSurrogate(*unit)) {
            const std::optional<char16_t> low =
                take('\\') && take('u') ? takeHex() : std::optional<char16_t>();
            if (!low || !QChar::isLowSurrogate(*low))
                return false;
            character = QChar::surrogateToUcs4(*unit, *low);
        }
        const QByteArray bytes = QString::fromUcs4(&character, 1).toUtf8();
        text.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        return true;
    }

    std::string_view m_text;
};

} // namespace

const ScanEntry* EntryDecoder::decode(std::string_view line)
{
    enum Member : unsigned { Path = 1, Name = 2, Size = 4, IsDir = 8, ParentPath = 16, All = 31 };
    unsigned found = 0;
    const auto isFirst = [&found](Member member) {
        const bool isNew = (found & member) == 0;
        found |= member;
        return isNew;
    };
    Rest rest(line);
    std::string keyScratch;
    std::string_view key;
    if (!rest.takeSign('{'))
        return nullptr;
    do {
        if (!rest.takeText(keyScratch, key) || !rest.takeSign(':'))
            return nullptr;
        bool isRead = false;
        if (key == "path")
            isRead = isFirst(Path) && rest.takeText(m_path, m_entry.path);
        else if (key == "name")
            isRead = isFirst(Name) && rest.takeText(m_name, m_entry.name);
        else if (key == "size")
            isRead = isFirst(Size) && rest.takeSize(m_entry.size);
        else if (key == "isDir")
            isRead = isFirst(IsDir) && rest.takeTruth(m_entry.isDir);
        else if (key == "parentPath")
            isRead = isFirst(ParentPath) && rest.takeText(m_parentPath, m_entry.parentPath);
        if (!isRead)
            return nullptr;
    } while (rest.takeSign(','));
    return rest.takeSign('}') && rest.isEmpty() && found == All ? &m_entry : nullptr;
}

} // namespace brivane::AdminHelperScript
