#pragma once

#include <QStringView>

namespace brivane {

/// Folders of ~/Library/Caches that other categories list.
inline constexpr QStringView cachesCoveredElsewhere[] = {
    u"com.apple.Safari",
    u"com.apple.Safari.SafeBrowsing",
    u"Google",
    u"Firefox",
    u"BraveSoftware",
    u"Microsoft Edge",
    u"com.operasoftware.Opera",
    u"company.thebrowser.Browser",
    u"com.apple.dt.Xcode",
    u"org.swift.swiftpm",
    u"com.apple.Music",
    u"com.apple.podcasts",
    u"com.apple.mail",
    u"com.docker.docker",
    u"Homebrew",
    u"Yarn",
};

} // namespace brivane
