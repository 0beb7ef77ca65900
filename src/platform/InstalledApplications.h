#pragma once

#include <QSet>
#include <QString>
#include <QStringView>

#include <memory>
#include <utility>

namespace brivane {

class Locations;

/// What was installed at one moment, as far as it takes to tell what removed applications left
/// behind. A value; any thread.
class InstalledNames {
public:
    /// Whether an entry of a folder of data belongs to none of `installed`.
    using Rule = bool (*)(QStringView entryName, const QSet<QString>& installed);

    InstalledNames(QSet<QString> names, Rule rule)
        : m_names(std::move(names))
        , m_rule(rule)
    {
    }

    /// Whether an entry of this name, in a folder where each application has its data under its
    /// identifier, was left by an application that is gone. Where that is in doubt it was not.
    [[nodiscard]] bool isLeftover(QStringView entryName) const
    {
        return m_rule(entryName, m_names);
    }

private:
    QSet<QString> m_names;
    Rule m_rule;
};

/// Which applications this machine has. Every call looks afresh and may come from any thread.
class InstalledApplications {
public:
    InstalledApplications() = default;
    InstalledApplications(const InstalledApplications&) = delete;
    InstalledApplications& operator=(const InstalledApplications&) = delete;
    virtual ~InstalledApplications();

    /// On a Mac, and in a sandbox, bundles; on a Linux desktop what such a desktop installs, with
    /// the environment of this moment.
    static std::unique_ptr<InstalledApplications> ofThisMachine(const Locations& locations);

    /// Blocks while it reads the disk.
    [[nodiscard]] virtual InstalledNames names() = 0;
};

/// The identifiers of the bundles directly in "/Applications" and "~/Applications". A folder that
/// cannot be listed, and a bundle without an identifier, adds nothing. Any thread; blocks.
[[nodiscard]] QSet<QString> getInstalledAppBundleIds(const Locations& locations);

} // namespace brivane
