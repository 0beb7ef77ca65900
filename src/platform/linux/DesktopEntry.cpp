#include "platform/linux/DesktopEntry.h"

#include "platform/PathText.h"

#include <algorithm>
#include <iterator>
#include <memory>

// GLib's headers have names that are Qt's keywords elsewhere; they stand alone here.
#include <glib.h>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr auto group = G_KEY_FILE_DESKTOP_GROUP;

/// Of a value, in bytes; of longer ones nothing is kept.
constexpr qsizetype longestValue = 4096;

struct Release {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
    void operator()(char* text) const { g_free(text); }
    void operator()(char** list) const { g_strfreev(list); }
};

class EntryReader {
public:
    EntryReader(GKeyFile* file, const QStringList& languages)
        : m_file(file)
        , m_languages(languages)
    {
    }

    [[nodiscard]] QByteArray bytes(const char* key) const
    {
        const std::unique_ptr<char, Release> value(
            g_key_file_get_string(m_file, group, key, nullptr));
        const QByteArrayView bytes(value.get());
        return bytes.size() <= longestValue ? bytes.toByteArray() : QByteArray();
    }

    [[nodiscard]] QString text(const char* key) const { return QString::fromUtf8(bytes(key)); }

    [[nodiscard]] bool isTrue(const char* key) const
    {
        return g_key_file_get_boolean(m_file, group, key, nullptr) != FALSE;
    }

    [[nodiscard]] QString localized(const QByteArray& key) const
    {
        for (const QString& language : m_languages) {
            const QString value = text((key + '[' + language.toUtf8() + ']').constData());
            if (!value.isEmpty())
                return value;
        }
        return text(key.constData());
    }

private:
    GKeyFile* m_file;
    const QStringList& m_languages;
};

QStringList wordsOf(const QByteArray& command)
{
    QStringList words;
    gchar** parsed = nullptr;
    if (command.isEmpty() || !g_shell_parse_argv(command.constData(), nullptr, &parsed, nullptr))
        return words;
    const std::unique_ptr<char*, Release> owned(parsed);
    for (gchar** word = parsed; *word != nullptr; ++word)
        words += PathText::fromBytes(*word);
    return words;
}

/// Takes what only prepares the start from the front: "env A=b", "nice".
void dropPreparation(QStringList& words)
{
    static constexpr QStringView preparing[] = {u"env", u"nice", u"nohup", u"pkexec", u"setsid"};
    while (!words.isEmpty() &&
           std::ranges::find(preparing, PathText::lastComponent(words.front())) !=
               std::end(preparing)) {
        words.removeFirst();
        while (!words.isEmpty() && (words.front().startsWith(u'-') || words.front().contains(u'=')))
            words.removeFirst();
    }
}

/// The first word after "run" that is no option.
QString afterRun(const QStringList& words)
{
    const auto found =
        std::find_if(words.begin() + std::min<qsizetype>(2, words.size()), words.end(),
                     [](const QString& word) { return !word.startsWith(u'-'); });
    return found == words.end() ? QString() : *found;
}

void describeProgram(DesktopEntry& entry, QStringList words)
{
    dropPreparation(words);
    if (words.isEmpty())
        return;
    const QString program = PathText::lastComponent(words.front());
    const bool runs = words.size() > 2 && words[1] == u"run";
    if (program == u"flatpak" && runs) {
        if (entry.flatpak.isEmpty())
            entry.flatpak = afterRun(words);
        return;
    }
    if (program == u"snap" && runs && entry.snap.isEmpty())
        entry.snap = afterRun(words).section(u'.', 0, 0);
    if (!entry.snap.isEmpty() || !entry.flatpak.isEmpty())
        return;
    if (isInterpreter(program)) {
        words.removeFirst();
        while (!words.isEmpty() && words.front().startsWith(u'-') && words.front() != u"-c")
            words.removeFirst();
        if (words.isEmpty() || !words.front().startsWith(u'/'))
            return;
    }
    entry.program = words.takeFirst();
    entry.arguments = static_cast<int>(
        std::ranges::count_if(words, [](const QString& word) { return !word.startsWith(u'%'); }));
}

} // namespace

bool isInterpreter(QStringView program)
{
    while (!program.isEmpty() && (program.back().isDigit() || program.back() == u'.'))
        program.chop(1);
    static constexpr QStringView interpreters[] = {
        u"bash", u"dash",   u"electron", u"gjs", u"gjs-console", u"java", u"ksh", u"lua",  u"mono",
        u"node", u"nodejs", u"perl",     u"php", u"python",      u"ruby", u"sh",  u"wish", u"zsh"};
    return std::ranges::find(interpreters, program) != std::end(interpreters);
}

std::optional<DesktopEntry> DesktopEntry::parse(const QByteArray& content,
                                                const QStringList& languages)
{
    const std::unique_ptr<GKeyFile, Release> file(g_key_file_new());
    if (content.isEmpty() || content.size() > largestFile ||
        !g_key_file_load_from_data(file.get(), content.constData(),
                                   static_cast<gsize>(content.size()), G_KEY_FILE_KEEP_TRANSLATIONS,
                                   nullptr))
        return {};
    const EntryReader reader(file.get(), languages);
    if (reader.bytes("Type") != "Application")
        return {};
    DesktopEntry entry;
    entry.name = reader.text("Name");
    entry.localizedName = reader.localized("Name");
    entry.windowClass = reader.text("StartupWMClass");
    entry.flatpak = reader.text("X-Flatpak");
    entry.snap = reader.text("X-SnapInstanceName");
    entry.isShown = !reader.isTrue("NoDisplay") && !reader.isTrue("Hidden");
    entry.isTerminal = reader.isTrue("Terminal");
    describeProgram(entry, wordsOf(reader.bytes("Exec")));
    return entry;
}

} // namespace brivane
