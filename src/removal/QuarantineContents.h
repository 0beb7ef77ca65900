#pragma once

#include "platform/FileLock.h"
#include "removal/QuarantineManifest.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace brivane {

struct Host;

/// What a store holds when it is opened, and how to go on listing it.
struct QuarantineContents {
    QuarantineManifest manifest;
    QList<QuarantineItem> items = {};
    bool hasFolder = false;     ///< there is a store at all
    bool hasUnrecorded = false; ///< some of the items are in no list yet
    QStringList leftovers = {}; ///< paths of what a crash left of copies and of the manifest
    /// Held: nobody else changes the store, and whoever has this may.
    std::shared_ptr<const FileLock> lock = {};
    /// Why there is no store, or its lock could not be had, in words; null when it is held.
    QString refusal = {};

    /// Makes the store's folder (absolute) where it is missing, claims it and reads what it holds.
    /// Any thread; blocks.
    ///
    /// Listed is what lies in this folder, however the list spells the way there. What lies there
    /// and is not in the list, left by an older crash or put there by another hand, is listed as of
    /// now in the category "Recovered", and belongs into "Recovered" in the machine's home.
    static QuarantineContents read(const Host& host, const QString& quarantineDir);
};

} // namespace brivane
