// Lists a folder and all that it holds, for a scan as administrator.
//
//   helper PATH
//
// Prints one line of JSON for each file, link and folder, and at the end
// "__SCAN_COMPLETE__COUNT" on standard error. Status 2 without a path, 1 when the path cannot be
// opened or the output not be written.
//
// This text is brought to the machine as it stands, compiled there and run as root. So it is one
// file, needs nothing but the C library, opens nothing for writing, and ends by the first line that
// nobody reads. Names are bytes: one that is no UTF-8 is written as the lone surrogate U+DC00 +
// byte, which makes valid JSON and can be told from all text.

#ifndef _FILE_OFFSET_BITS
#define _FILE_OFFSET_BITS 64
#endif

#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <fts.h>
#include <sys/stat.h>

namespace {

/// Length of the valid UTF-8 sequence that `text` begins with, 0 for none. `text` ends with a NUL,
/// which is part of no sequence.
size_t sequenceLength(const char* text)
{
    const auto at = [text](size_t i) { return static_cast<unsigned char>(text[i]); };
    const auto continues = [&at](size_t i) { return at(i) >= 0x80 && at(i) <= 0xBF; };
    const unsigned char lead = at(0);
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return continues(1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        const bool isOverlong = lead == 0xE0 && at(1) < 0xA0;
        const bool isSurrogate = lead == 0xED && at(1) > 0x9F;
        return !isOverlong && !isSurrogate && continues(1) && continues(2) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const bool isOverlong = lead == 0xF0 && at(1) < 0x90;
        const bool isTooHigh = lead == 0xF4 && at(1) > 0x8F;
        const bool isWhole = continues(1) && continues(2) && continues(3);
        return !isOverlong && !isTooHigh && isWhole ? 4 : 0;
    }
    return 0;
}

bool isPlain(char c)
{
    return c >= ' ' && c <= '~' && c != '"' && c != '\\';
}

void printText(const char* text, size_t length)
{
    std::putchar('"');
    const char* const end = text + length;
    while (text < end) {
        const char* plain = text;
        while (plain < end && isPlain(*plain))
            ++plain;
        fwrite_unlocked(text, 1, static_cast<size_t>(plain - text), stdout);
        text = plain;
        if (text == end)
            break;
        const unsigned byte = static_cast<unsigned char>(*text);
        const size_t sequence = sequenceLength(text);
        if (*text == '"' || *text == '\\')
            std::printf("\\%c", *text);
        else if (sequence == 1)
            std::printf("\\u%04x", byte);
        else if (sequence == 0)
            std::printf("\\udc%02x", byte);
        else
            fwrite_unlocked(text, 1, sequence, stdout);
        text += sequence > 0 ? sequence : 1;
    }
    std::putchar('"');
}

void printEntry(const FTSENT& entry, unsigned long long size, bool isDirectory)
{
    const char* path = entry.fts_path;
    const char* slash = std::strrchr(path, '/');
    const size_t parentLength = slash > path ? static_cast<size_t>(slash - path) : 1;
    std::fputs("{\"path\":", stdout);
    printText(path, std::strlen(path));
    std::fputs(",\"name\":", stdout);
    printText(entry.fts_name, std::strlen(entry.fts_name));
    std::printf(",\"size\":%llu,\"isDir\":%s,\"parentPath\":", size,
                isDirectory ? "true" : "false");
    printText(slash ? path : "", slash ? parentLength : 0);
    std::fputs("}\n", stdout);
}

/// Whether another file system, or another part of this one, is mounted on the folder: what it
/// holds is seen elsewhere.
bool isMountPoint(const FTSENT& folder)
{
    struct statx status;
    return statx(AT_FDCWD, folder.fts_accpath, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, 0, &status) ==
               0 &&
           (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

} // namespace

int main(int count, char** arguments)
{
    if (count < 2) {
        std::fputs("Usage: helper <path>\n", stderr);
        return 2;
    }
    char* roots[] = {arguments[1], nullptr};
    FTS* walk = fts_open(roots, FTS_PHYSICAL | FTS_XDEV | FTS_NOCHDIR, nullptr);
    if (!walk)
        return 1;
    unsigned long long printed = 0;
    while (FTSENT* entry = fts_read(walk)) {
        if (entry->fts_info == FTS_F || entry->fts_info == FTS_SL) {
            printEntry(*entry, static_cast<unsigned long long>(entry->fts_statp->st_size), false);
            ++printed;
        } else if (entry->fts_info == FTS_D) {
            printEntry(*entry, 0, true);
            ++printed;
            if (entry->fts_level > FTS_ROOTLEVEL && isMountPoint(*entry))
                fts_set(walk, entry, FTS_SKIP);
        }
        if (std::ferror(stdout))
            return 1;
    }
    fts_close(walk);
    if (std::fflush(stdout) != 0)
        return 1;
    std::fprintf(stderr, "__SCAN_COMPLETE__%llu\n", printed);
    return 0;
}
