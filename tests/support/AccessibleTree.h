#pragma once

#include <QAccessible>
#include <QMetaEnum>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSet>

namespace brivane::testing {

/// What a screen reader finds in a window.
struct AccessibleTree {
    QStringList lines; ///< All that is visible, one a line, further in the deeper.
    /// What can be focused or pressed and is not told by role and name; what is read twice.
    QStringList faults;
};

namespace detail {

inline bool canBePressed(QAccessibleInterface& spoken)
{
    return spoken.actionInterface() && spoken.actionInterface()->actionNames().contains(
                                           QAccessibleActionInterface::pressAction());
}

/// `said` is what the control says that it lies in.
inline void walk(QAccessibleInterface* spoken, int depth, const QString& said, AccessibleTree& tree,
                 QSet<QObject*>& found)
{
    if (!spoken)
        return;
    found += spoken->object();
    if (spoken->state().invisible)
        return;
    const QAccessible::Role role = spoken->role();
    const QString name = spoken->text(QAccessible::Name);
    const QString description = spoken->text(QAccessible::Description);
    const QString line =
        QStringLiteral("%1%2 \"%3\" %4")
            .arg(QString(2 * depth, u' '),
                 QString::fromLatin1(QMetaEnum::fromType<QAccessible::Role>().valueToKey(role)),
                 name, description);
    tree.lines += line;
    auto* item = qobject_cast<QQuickItem*>(spoken->object());
    const bool isControl = item && (item->activeFocusOnTab() || canBePressed(*spoken));
    const bool isTold =
        role != QAccessible::NoRole && role != QAccessible::Client && !name.isEmpty();
    if (isControl && !isTold)
        tree.faults += line + u' ' + QString::fromLatin1(item->metaObject()->className());
    const bool isText = role == QAccessible::StaticText || role == QAccessible::Heading;
    if (isText && !name.isEmpty() && said.contains(name))
        tree.faults += QStringLiteral("twice ") + line;
    const bool saysAll = isControl || role == QAccessible::Dialog;
    for (int at = 0; at < spoken->childCount(); ++at)
        walk(spoken->child(at), depth + 1, saysAll ? name + u'\n' + description : said, tree,
             found);
}

/// Stops of the Tab key that a screen reader does not find at all.
inline void findUnheard(QQuickItem* item, const QSet<QObject*>& found, QStringList& faults)
{
    if (!item->isVisible())
        return;
    if (item->activeFocusOnTab() && !found.contains(item))
        faults += QStringLiteral("unheard ") + QString::fromLatin1(item->metaObject()->className());
    for (QQuickItem* child : item->childItems())
        findUnheard(child, found, faults);
}

} // namespace detail

inline AccessibleTree accessibleTree(QQuickWindow& window)
{
    AccessibleTree tree;
    QSet<QObject*> found;
    detail::walk(QAccessible::queryAccessibleInterface(&window), 0, {}, tree, found);
    detail::findUnheard(window.contentItem(), found, tree.faults);
    return tree;
}

} // namespace brivane::testing
