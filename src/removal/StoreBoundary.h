#pragma once

#include <QString>

#include <optional>

namespace brivane {

/// Which paths may go into the quarantine, and which are in it.
///
/// Refused is what would break the store itself: its folder and what is in it, the home folder, all
/// folders that lead to these two, also by way of a link, and every other spelling of a path than
/// the plain one. Whether a path is dangerous otherwise is for SafetyChecker to say.
///
/// A value; any thread. The constructor and accepted() look at the disk.
class StoreBoundary {
public:
    /// Both are absolute and plainly spelled. What links on the way there lead to is found out now.
    StoreBoundary(const QString& quarantineDir, const QString& home);

    /// The real path of what may go in: without links on the way, itself not followed; none for
    /// what may not.
    [[nodiscard]] std::optional<QString> accepted(const QString& path) const;
    /// The real path of the store's folder.
    [[nodiscard]] const QString& realDir() const { return m_realDir; }

    /// Whether `path` can be that of an item stored in `quarantineDir`, and not of one of the
    /// store's own files. By its text.
    [[nodiscard]] static bool isStored(const QString& path, const QString& quarantineDir);

private:
    [[nodiscard]] bool isForbidden(const QString& path) const;

    QString m_dir;
    QString m_realDir;
    QString m_home;
    QString m_realHome;
};

} // namespace brivane
