#include "platform/Pasteboard.h"

#include "platform/PathText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace brivane;

TEST(Pasteboard, PathLosesNoByteAndIsNoFileToCopy)
{
    const auto pasteboard = Pasteboard::ofThisMachine();
    for (const QByteArray path : {"/plain", "/Grüße #1\n", "/invalid \xFF\xC3"}) {
        pasteboard->setPath(PathText::fromBytes(path));
        const QMimeData& pasted = *QGuiApplication::clipboard()->mimeData();
        for (const QString& kind : {u"text/plain"_s, u"text/plain;charset=utf-8"_s})
            EXPECT_EQ(pasted.data(kind), path) << kind.toStdString();
        EXPECT_EQ(pasted.text(), QString::fromUtf8(path));
        EXPECT_FALSE(pasted.hasUrls());
        EXPECT_EQ(pasted.formats().size(), 2);
    }
}
