#include "core/AppMode.h"

#include <array>

namespace brivane {

namespace {

struct ModeRow {
    AppMode::Mode mode;
    const char16_t* title;
    const char16_t* iconName;
};

constexpr std::array modeRows = {
    ModeRow{AppMode::dashboard, u"Dashboard", u"gauge.with.dots.needle.67percent"},
    ModeRow{AppMode::healthCheck, u"Health Check", u"gauge.with.needle.fill"},
    ModeRow{AppMode::scanner, u"Space Scanner", u"square.grid.2x2.fill"},
    ModeRow{AppMode::cleaner, u"Smart Clean", u"sparkles"},
    ModeRow{AppMode::uninstaller, u"Uninstaller", u"app.gift.fill"},
    ModeRow{AppMode::duplicates, u"Duplicates", u"doc.on.doc.fill"},
    ModeRow{AppMode::similarPhotos, u"Similar Photos", u"photo.stack.fill"},
    ModeRow{AppMode::quarantine, u"Quarantine", u"shield.lefthalf.filled"},
    ModeRow{AppMode::largeFiles, u"Large Files", u"arrow.up.doc.fill"},
    ModeRow{AppMode::startupItems, u"Startup", u"power.circle.fill"},
    ModeRow{AppMode::maintenance, u"Maintenance", u"wrench.and.screwdriver.fill"},
    ModeRow{AppMode::devCleanup, u"Dev Cleanup", u"hammer.fill"},
    ModeRow{AppMode::privacy, u"Privacy", u"lock.shield.fill"},
    ModeRow{AppMode::cleaningMode, u"Clean Mode", u"hands.sparkles.fill"},
    ModeRow{AppMode::snapshots, u"Snapshots", u"camera.on.rectangle.fill"},
    ModeRow{AppMode::settings, u"Settings", u"gearshape"},
};

struct SectionRow {
    AppMode::NavSection section;
    const char16_t* heading;
    std::array<AppMode::Mode, 6> modes;
    int count;
};

constexpr std::array sectionRows = {
    SectionRow{AppMode::overviewSection,
               u"Overview",
               {AppMode::dashboard, AppMode::healthCheck, AppMode::scanner},
               3},
    SectionRow{AppMode::cleaningSection,
               u"Cleaning",
               {AppMode::cleaner, AppMode::duplicates, AppMode::similarPhotos, AppMode::largeFiles,
                AppMode::uninstaller, AppMode::quarantine},
               6},
    SectionRow{AppMode::performanceSection,
               u"Performance",
               {AppMode::startupItems, AppMode::maintenance, AppMode::devCleanup},
               3},
    SectionRow{AppMode::privacySection,
               u"Privacy & Care",
               {AppMode::privacy, AppMode::snapshots, AppMode::cleaningMode},
               3},
    SectionRow{AppMode::appSection, u"App", {AppMode::settings}, 1},
};

const ModeRow& rowOf(AppMode::Mode mode)
{
    return modeRows.at(static_cast<size_t>(mode));
}

const SectionRow& rowOf(AppMode::NavSection section)
{
    return sectionRows.at(static_cast<size_t>(section));
}

} // namespace

QList<AppMode::Mode> AppMode::allModes()
{
    QList<Mode> modes;
    for (const ModeRow& row : modeRows)
        modes += row.mode;
    return modes;
}

QList<AppMode::NavSection> AppMode::allSections()
{
    QList<NavSection> sections;
    for (const SectionRow& row : sectionRows)
        sections += row.section;
    return sections;
}

QString AppMode::title(Mode mode)
{
    return QString::fromUtf16(rowOf(mode).title);
}

QString AppMode::iconName(Mode mode)
{
    return QString::fromUtf16(rowOf(mode).iconName);
}

QString AppMode::heading(NavSection section)
{
    return QString::fromUtf16(rowOf(section).heading);
}

QList<AppMode::Mode> AppMode::modes(NavSection section)
{
    const SectionRow& row = rowOf(section);
    return QList<Mode>(row.modes.begin(), row.modes.begin() + row.count);
}

} // namespace brivane
