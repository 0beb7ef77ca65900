#pragma once

#include <QStringView>

namespace brivane {

/// What paths of an application's files hold where its identifier does not stand in them. In small
/// letters, as paths are compared.
struct ApplicationFragment {
    QStringView fragment;
    QStringView bundleIdentifier;
};

inline constexpr ApplicationFragment applicationFragments[] = {
    {u"/library/caches/google/", u"com.google.chrome"},
    {u"/library/caches/firefox", u"org.mozilla.firefox"},
    {u"/library/caches/bravesoftware", u"com.brave.browser"},
    {u"/library/caches/microsoft edge", u"com.microsoft.edgemac"},
};

} // namespace brivane
