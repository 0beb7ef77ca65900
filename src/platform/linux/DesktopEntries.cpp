#include "platform/linux/DesktopEntries.h"

#include "platform/FileReading.h"
#include "platform/FolderListing.h"
#include "platform/PathText.h"

#include <QSet>

#include <algorithm>
#include <memory>

// GLib's headers have names that are Qt's keywords elsewhere; they stand alone here.
#include <glib.h>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// The largest ones, of office programs in all languages, have some 40 KiB.
constexpr qsizetype largestEntry = qsizetype(256) << 10;
constexpr qsizetype mostEntries = 20'000;
constexpr std::size_t mostFolders = 2'000;
constexpr int deepest = 8; ///< folders in each other; those of Windows' programs are four deep

constexpr auto group = G_KEY_FILE_DESKTOP_GROUP;

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
        return value.get();
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

/// Collects the entries of one folder after the other.
class Collection {
public:
    explicit Collection(const SoftwarePlaces& places)
        : m_places(places)
    {
    }

    void add(const QString& folder, const QString& prefix, int depth)
    {
        const Result<FolderListing> listing = listFolder(folder);
        if (!listing) {
            m_result.isComplete = m_result.isComplete && isMissing(listing.error());
            return;
        }
        // A link may lead back to where it lies.
        if (std::ranges::find(m_seen, listing->folder) != m_seen.end())
            return;
        m_seen.push_back(listing->folder);
        for (const FolderListing::Item& item : listing->items) {
            if (item.kind == FolderListing::Item::Kind::Folder) {
                if (depth < deepest && m_seen.size() < mostFolders)
                    add(folder + u'/' + item.name, prefix + item.name + u'-', depth + 1);
                else
                    m_result.isComplete = false;
            } else if (item.name.endsWith(u".desktop")) {
                addEntry(folder + u'/' + item.name, prefix + item.name.chopped(8),
                         item.kind == FolderListing::Item::Kind::File);
            }
        }
    }

    DesktopEntries take() { return std::move(m_result); }

private:
    void addEntry(const QString& path, const QString& id, bool isFile)
    {
        if (m_ids.contains(id))
            return;
        if (m_ids.size() == mostEntries) {
            m_result.isComplete = false;
            return;
        }
        m_ids.insert(id);
        m_result.ids += id;
        if (!isFile)
            return;
        const Result<QByteArray> content = readWholeFile(path, largestEntry);
        if (!content)
            return;
        if (auto entry = parseDesktopEntry(*content, m_places.languages)) {
            entry->id = id;
            m_result.entries.push_back(std::move(*entry));
        }
    }

    const SoftwarePlaces& m_places;
    DesktopEntries m_result;
    QSet<QString> m_ids;
    std::vector<ObjectId> m_seen;
};

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

std::optional<DesktopEntry> parseDesktopEntry(const QByteArray& content,
                                              const QStringList& languages)
{
    const std::unique_ptr<GKeyFile, Release> file(g_key_file_new());
    if (content.isEmpty() || content.size() > largestEntry ||
        !g_key_file_load_from_data(file.get(), content.constData(),
                                   static_cast<gsize>(content.size()), G_KEY_FILE_NONE, nullptr))
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

DesktopEntries DesktopEntries::read(const SoftwarePlaces& places)
{
    Collection collection(places);
    for (const QString& folder : places.data)
        collection.add(folder + u"/applications"_s, {}, 0);
    return collection.take();
}

} // namespace brivane
