#include "Journey.h"

#include <QAccessible>

#include <numeric>

using namespace Qt::StringLiterals;

namespace brivane::testing {

Journey::Journey()
{
    m_disk.clockStep = std::chrono::milliseconds(500);
    for (const auto& [file, bytes] : {std::pair{u"~/Movies/Feature.mov", 3'000'000'000},
                                      {u"~/Movies/Trailer.mov", 400'000'000},
                                      {u"~/Documents/Thesis.pdf", 20'000'000},
                                      {u"/Library/Fonts/Extra/Sans.otf", 4'000'000}})
        m_disk.machine.file(file, SandboxMachine::Size{bytes});
}

void Journey::SetUp()
{
    m_before = diskState(m_disk.machine.path(u"/"));
    m_app.emplace(m_disk);
    m_app->shell();
}

void Journey::TearDown()
{
    EXPECT_EQ(textsOfTheSandbox(), QStringList()) << "the window tells where the machine lies";
    m_app.reset();
    changeDisk([] {});
}

QStringList Journey::textsOfTheSandbox()
{
    const QString folder = m_disk.machine.path(u"/").chopped(u"/Macintosh HD"_s.size());
    QStringList found;
    QList<QQuickItem*> open = {m_app->window().contentItem()};
    while (!open.isEmpty()) {
        QQuickItem* item = open.takeLast();
        QStringList texts = {item->property("text").toString()};
        if (QAccessibleInterface* told = QAccessible::queryAccessibleInterface(item)) {
            for (const auto kind :
                 {QAccessible::Name, QAccessible::Description, QAccessible::Value})
                texts += told->text(kind);
        }
        found += texts.filter(folder);
        open += item->childItems();
    }
    return found;
}

void Journey::changeDisk(const std::function<void()>& change)
{
    const QString disk = m_disk.machine.path(u"/");
    EXPECT_EQ(differences(m_before, diskState(disk)), QStringList());
    change();
    m_before = diskState(disk);
}

long Journey::lastButOneEntry() const
{
    const auto entries = [](const auto& path) {
        return std::get<0>(path.second) == std::filesystem::file_type::directory ? 2L : 1L;
    };
    return std::transform_reduce(m_before.begin(), m_before.end(), 0L, std::plus(), entries);
}

bool Journey::isHeld()
{
    const bool isHeld = waitUntil([&] { return app().clock().isHolding(); });
    AppWindow::step(); // what the walk told before that waits in the event loop
    return isHeld;
}

bool Journey::walksOn(long entries)
{
    app().clock().holdAfter(entries);
    return isHeld();
}

QList<QQuickItem*> Journey::items(const QString& kind)
{
    app().picture();
    QList<QQuickItem*> items = findItems(
        app().window(), [&](const QQuickItem& item) { return item.objectName() == kind; });
    std::ranges::sort(items, {}, [](const QQuickItem* item) { return item->mapToScene({}).y(); });
    return items;
}

QStringList Journey::names(const QString& kind)
{
    QStringList names;
    for (const QQuickItem* item : items(kind))
        names += item->property("name").toString();
    return names;
}

QQuickItem& Journey::item(const QString& kind, const QString& name)
{
    for (QQuickItem* item : items(kind)) {
        if (item->property("name") == name)
            return *item;
    }
    throw std::runtime_error("missing on screen: " + name.toStdString());
}

QString Journey::focus()
{
    const QQuickItem* item = stop().item;
    return item ? item->objectName() : QString();
}

bool Journey::tabTo(const QString& stop)
{
    for (int presses = 0; focus() != stop && presses < manyStops; ++presses)
        app().press(Qt::Key_Tab);
    return focus() == stop;
}

void Journey::expectTabStops(const QStringList& names)
{
    const QStringList forth = round(Qt::Key_Tab);
    const QStringList back = round(Qt::Key_Backtab);
    EXPECT_EQ(back, QStringList(forth.rbegin(), forth.rend()));
    EXPECT_EQ(forth.filter(u"invisible "_s), QStringList());
    QStringList found;
    std::ranges::copy_if(forth, std::back_inserter(found),
                         [&](const QString& stop) { return names.contains(stop); });
    EXPECT_EQ(found, names) << "of: " << qPrintable(forth.join(u", "));
}

QStringList Journey::round(Qt::Key key)
{
    std::vector<Stop> stops;
    do {
        app().press(key);
        stops.push_back(stop());
    } while (stops.size() < manyStops && (stops.size() < 2 || stops.back().item != stops[0].item));
    EXPECT_LT(stops.size(), manyStops) << "the keyboard does not come around";
    QStringList names;
    for (std::size_t at = 0; at + 1 < stops.size(); ++at)
        names += nameIfSeen(stops[at], stops[at + 1]);
    return names;
}

QString Journey::focusSeen()
{
    const Stop here = stop();
    app().press(Qt::Key_Tab);
    const Stop next = stop();
    app().press(Qt::Key_Backtab);
    EXPECT_EQ(stop().item, here.item) << "Tab and Backtab do not lead back";
    return nameIfSeen(here, next);
}

Journey::Stop Journey::stop()
{
    const QImage picture = app().picture(); // rows are made with the picture
    return {app().window().activeFocusItem(), picture};
}

QString Journey::nameIfSeen(const Stop& stop, const Stop& next)
{
    if (!stop.item)
        return {};
    // With some room for the ring.
    const QRect place =
        stop.item->mapRectToScene(stop.item->boundingRect()).adjusted(-5, -5, 5, 5).toAlignedRect();
    const bool isSeen = stop.picture.copy(place) != next.picture.copy(place);
    return isSeen ? stop.item->objectName() : "invisible "_L1 + stop.item->objectName();
}

QStringList Journey::log() const
{
    QStringList lines;
    for (const LogLine& line : m_log.lines())
        lines += line.category + u": "_s + line.text;
    return lines;
}

} // namespace brivane::testing
