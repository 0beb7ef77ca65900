#pragma once

#include <QStringView>

// By which endings and beginnings of their names files are junk. Endings are compared in lower
// case, beginnings as they stand.
namespace brivane {

/// Files that programs may have left in the library and that are large.
inline constexpr QStringView largeFileJunkExtensions[] = {
    u"dmg",      u"pkg",        u"iso",  u"img",     u"xip", u"zip",  u"tar",
    u"gz",       u"tgz",        u"bz2",  u"7z",      u"rar", u"ipsw", u"ipa",
    u"download", u"crdownload", u"part", u"partial", u"log",
};

inline constexpr QStringView screenshotExtensions[] = {
    u"png", u"jpg", u"jpeg", u"heic", u"tiff", u"mov", u"mp4",
};

inline constexpr QStringView diskImageExtensions[] = {u"dmg", u"pkg", u"iso", u"img"};

inline constexpr QStringView screenshotPrefixes[] = {
    u"Screenshot",     u"Screen Shot",     u"Zrzut ekranu",
    u"Bildschirmfoto", u"Capture d'écran", u"Capture d'ecran",
};

} // namespace brivane
