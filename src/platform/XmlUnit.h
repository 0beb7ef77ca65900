#pragma once

#include <QByteArray>
#include <QStringView>

// Some units of text have no form in XML, not even as a character reference: control characters,
// lone surrogates, U+FFFE and U+FFFF. In our files each stands as a processing instruction,
// <?utf-16 DC80?>, which no text can be mistaken for. Pure functions, any thread.
namespace brivane::PropertyList {

inline constexpr QStringView unitTarget = u"utf-16";

/// Whether `unit`, which is not half of a pair, has no form of its own.
[[nodiscard]] inline bool isFormless(char16_t unit)
{
    return (unit < 0x20 && unit != u'\t' && unit != u'\n' && unit != u'\r') ||
           QChar::isSurrogate(unit) || unit >= 0xFFFE;
}

[[nodiscard]] inline QByteArray instructionFor(char16_t unit)
{
    return "<?utf-16 " + QByteArray::number(unit, 16).rightJustified(4, '0').toUpper() + "?>";
}

} // namespace brivane::PropertyList
