#include "app/Module.h"
#include "cleaner/CleanerViewModel.h"
#include "core/ActivityTracker.h"
#include "removal/QuarantineViewModel.h"
#include "scanner/ScanViewModel.h"

namespace brivane {

using namespace Qt::StringLiterals;

std::span<const Module> modules()
{
    static const Module rows[] = {
        {AppMode::scanner, "Scanner/screens/ScannerContentView.qml"_L1, &make<ScanViewModel>,
         ActivityTracker::scanner, "Scanner/screens/ScannerSidebar.qml"_L1},
        {AppMode::cleaner, "Cleaner/screens/CleanerView.qml"_L1, &make<CleanerViewModel>,
         ActivityTracker::smartClean},
        {AppMode::duplicates, {}, nullptr, ActivityTracker::duplicates},
        {AppMode::quarantine, "Removal/screens/QuarantineView.qml"_L1, &make<QuarantineViewModel>},
    };
    return rows;
}

} // namespace brivane
