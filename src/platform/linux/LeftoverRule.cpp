#include "platform/linux/LeftoverRule.h"

#include <QList>

#include <algorithm>
#include <iterator>

namespace brivane {

namespace {

/// What reverse-domain names of programs begin with. Domains that are words of file names as well
/// ("in", "is", "so", "to") stand for doubt and are left out.
constexpr QStringView topLevelDomains[] = {
    u"app",   u"at",     u"au",       u"be",     u"best",   u"biz",   u"blog",    u"br",
    u"ca",    u"cafe",   u"cc",       u"ch",     u"chat",   u"cloud", u"cn",      u"co",
    u"codes", u"com",    u"cz",       u"de",     u"design", u"dev",   u"digital", u"dk",
    u"edu",   u"ee",     u"engineer", u"es",     u"eu",     u"fi",    u"fm",      u"fr",
    u"fun",   u"fyi",    u"games",    u"garden", u"gg",     u"gov",   u"guru",    u"hu",
    u"ie",    u"im",     u"info",     u"ink",    u"io",     u"ir",    u"it",      u"jp",
    u"kr",    u"land",   u"life",     u"live",   u"lt",     u"lv",    u"md",      u"me",
    u"moe",   u"net",    u"network",  u"nl",     u"no",     u"nz",    u"one",     u"online",
    u"org",   u"page",   u"pl",       u"pm",     u"pro",    u"pt",    u"re",      u"rest",
    u"ro",    u"rocks",  u"ru",       u"se",     u"sh",     u"site",  u"sk",      u"social",
    u"space", u"studio", u"systems",  u"tech",   u"today",  u"tools", u"tv",      u"tw",
    u"ua",    u"uk",     u"us",       u"wiki",   u"work",   u"works", u"world",   u"xyz",
    u"zone"};

/// Domains that many programs of different origin share: that one of them is installed says nothing
/// of another.
constexpr QStringView sharedDomains[] = {u"codeberg",  u"github",      u"gitlab",
                                         u"gnome",     u"gtk",         u"kde",
                                         u"launchpad", u"sourceforge", u"xfce"};

/// Words that say of which sort a program is rather than which one.
constexpr QStringView sorts[] = {
    u"agent",   u"app",      u"beta",   u"bin",    u"browser", u"cli",      u"client",
    u"common",  u"core",     u"daemon", u"data",   u"dbus",    u"desktop",  u"editor",
    u"esr",     u"git",      u"gtk",    u"gui",    u"helper",  u"launcher", u"linux",
    u"main",    u"nightly",  u"player", u"plugin", u"preview", u"py",       u"qt",
    u"service", u"settings", u"sh",     u"stable", u"studio",  u"viewer",   u"x11"};

/// Endings of files that belong to the program whose name stands before them.
constexpr QStringView fileEndings[] = {
    u".appimage",   u".bak",      u".binarycookies", u".cfg",   u".conf",
    u".config",     u".db",       u".ini",           u".json",  u".lock",
    u".lockfile",   u".log",      u".old",           u".plist", u".rc",
    u".savedstate", u".settings", u".sqlite",        u".state", u".toml",
    u".txt",        u".xml",      u".yaml",          u".yml"};

bool isOneOf(QStringView text, const auto& table)
{
    return std::find(std::begin(table), std::end(table), text) != std::end(table);
}

/// All of `text`, lower-cased, that is a letter or a digit: spellings of one name differ in the
/// rest.
QString squashed(QStringView text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar unit : text) {
        if (unit.isLetterOrNumber())
            result += unit.toLower();
    }
    return result;
}

QStringView withoutFileEndings(QStringView name)
{
    const auto chop = [&] {
        return std::any_of(std::begin(fileEndings), std::end(fileEndings), [&](QStringView ending) {
            if (name.size() <= ending.size() || !name.endsWith(ending))
                return false;
            name.chop(ending.size());
            return true;
        });
    };
    while (chop()) {
    }
    return name;
}

/// The components of a reverse-domain name, at least three; none when `name`, in lower case, is
/// anything else.
QList<QStringView> reverseDomain(QStringView name)
{
    QList<QStringView> components = name.split(u'.');
    const auto isComponent = [](QStringView text) {
        return !text.isEmpty() && !(text[0] >= u'0' && text[0] <= u'9') && text[0] != u'-' &&
               std::all_of(text.begin(), text.end(), [](QChar unit) {
                   return (unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9') ||
                          unit == u'-' || unit == u'_';
               });
    };
    const bool isOne = components.size() >= 3 && isOneOf(components[0], topLevelDomains) &&
                       std::all_of(components.begin(), components.end(), isComponent);
    return isOne ? components : QList<QStringView>();
}

/// `name` without words at its end that are numbers or a sort: "google-chrome-stable", "gimp-2.10".
QStringView withoutSort(QStringView name)
{
    for (;;) {
        qsizetype start = name.size();
        while (start > 0 && name[start - 1].isLetterOrNumber())
            --start;
        const QStringView word = name.sliced(start);
        const bool isNumber =
            std::all_of(word.begin(), word.end(), [](QChar unit) { return unit.isDigit(); });
        if (start == 0 || !(isNumber || isOneOf(word, sorts)))
            break;
        name.truncate(start - 1);
    }
    while (name.size() > 2 && name.back().isDigit()) // "python3", "libreoffice7"
        name.chop(1);
    return name;
}

bool isBorne(const QList<QStringView>& components, const QSet<QString>& installed)
{
    const auto bears = [&](const QString& name) {
        return !name.isEmpty() && installed.contains(name);
    };
    // A library has data under a name that stands within its package's:
    // "libkf5syntaxhighlighting5".
    const auto isWithin = [&](const QString& name) {
        constexpr qsizetype shortest = 8; // less stands in names by chance
        return name.size() >= shortest &&
               std::any_of(installed.begin(), installed.end(),
                           [&](const QString& other) { return other.contains(name); });
    };
    const QString vendor = squashed(components[1]);
    const bool isShared = isOneOf(vendor, sharedDomains);
    // "com.github.cli" may be anybody's.
    if (isShared ? isOneOf(squashed(components.back()), sorts) : bears(vendor))
        return true;
    QString whole = squashed(components[0]) + vendor;
    for (qsizetype at = 2; at < components.size(); ++at) {
        const QString name = squashed(components[at]);
        whole += name;
        if (bears(whole) || bears(squashed(components[at - 1]) + name) ||
            (!isOneOf(name, sorts) && (bears(name) || isWithin(name))))
            return true;
    }
    return false;
}

} // namespace

void addInstalledName(QSet<QString>& installed, QStringView name)
{
    const QString lower = name.toString().toLower();
    const auto add = [&](const QString& text) {
        if (!text.isEmpty() && !isOneOf(text, sorts))
            installed.insert(text);
    };
    const QStringView plain = withoutFileEndings(lower);
    add(squashed(lower));
    add(squashed(plain));
    const QList<QStringView> components = reverseDomain(plain);
    if (components.isEmpty()) {
        add(squashed(withoutSort(plain)));
        return;
    }
    // What is part of an application bears the name of the whole: "org.gnome.Maps.SearchProvider".
    QString whole = squashed(components[0]) + squashed(components[1]);
    for (qsizetype at = 2; at < components.size(); ++at) {
        whole += squashed(components[at]);
        add(whole);
    }
    add(squashed(components.back()));
}

bool isLeftover(QStringView entryName, const QSet<QString>& installed)
{
    const QString lower = entryName.toString().toLower();
    QList<QStringView> components = reverseDomain(withoutFileEndings(lower));
    // What freedesktop.org names is agreed upon by all desktops, and belongs to none.
    if (installed.isEmpty() || components.isEmpty() || components[1] == u"freedesktop" ||
        isBorne(components, installed))
        return false;
    if (!components.back().endsWith(u"rc") || components.back().size() == 2)
        return true;
    components.back().chop(2); // "org.kde.katerc"
    return !isBorne(components, installed);
}

} // namespace brivane
