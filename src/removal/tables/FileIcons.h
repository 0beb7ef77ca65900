#pragma once

#include "components/ColorPalette.h"

#include <array>
#include <string_view>

namespace brivane {

/// How files with these extensions look in the list of what is in quarantine.
struct FileIcon {
    std::array<std::u16string_view, 5> extensions; ///< lower case; empty ones fill up
    std::u16string_view symbol;
    QColor (*color)();
};

// clang-format off
inline constexpr FileIcon fileIcons[] = {
    {{u"zip", u"rar", u"7z", u"gz"},             u"doc.zipper",        &ColorPalette::yellow},
    {{u"dmg", u"iso"},                           u"opticaldiscsymbol", &ColorPalette::blue},
    {{u"pkg"},                                   u"shippingbox",       &ColorPalette::orange},
    {{u"pdf"},                                   u"doc.text.fill",     &ColorPalette::red},
    {{u"mp4", u"mov", u"avi", u"mkv"},           u"film",              &ColorPalette::purple},
    {{u"mp3", u"wav", u"flac"},                  u"music.note",        &ColorPalette::pink},
    {{u"png", u"jpg", u"jpeg", u"gif", u"heic"}, u"photo",             &ColorPalette::green},
    {{u"log", u"txt"},                           u"doc.plaintext",     &ColorPalette::gray},
};
// clang-format on

/// Of everything else, folders among it.
inline constexpr FileIcon otherFileIcon = {{}, u"folder.fill", &ColorPalette::cyan};

} // namespace brivane
