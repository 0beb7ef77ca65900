#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace brivane {

/// The modules of the program: constant tables, also for QML as `AppMode`. Any thread.
class AppMode : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum Mode {
        dashboard,
        healthCheck,
        scanner,
        cleaner,
        uninstaller,
        duplicates,
        similarPhotos,
        quarantine,
        largeFiles,
        startupItems,
        maintenance,
        devCleanup,
        privacy,
        cleaningMode,
        snapshots,
        settings,
    };
    Q_ENUM(Mode)

    /// The groups of the sidebar.
    enum NavSection {
        overviewSection,
        cleaningSection,
        performanceSection,
        privacySection,
        appSection,
    };
    Q_ENUM(NavSection)

    using QObject::QObject;

    /// All modules in the order of Mode, which is not that of the sidebar.
    static QList<Mode> allModes();
    /// All sections, from top to bottom.
    static QList<NavSection> allSections();

    /// The raw value of a module: its title in the sidebar and its identity.
    Q_INVOKABLE static QString title(brivane::AppMode::Mode mode);
    /// The name of the module's symbol.
    Q_INVOKABLE static QString iconName(brivane::AppMode::Mode mode);

    Q_INVOKABLE static QString heading(brivane::AppMode::NavSection section);
    /// The modules of a section, from top to bottom.
    static QList<Mode> modes(NavSection section);
};

} // namespace brivane
