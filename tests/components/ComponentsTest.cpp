#include "QmlScene.h"
#include "components/Fonts.h"
#include "components/SymbolTable.h"

#include <QRawFont>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace brivane;

TEST(SymbolTable, EverySymbolHasAGlyphInTheFont)
{
    const QRawFont font(u":/brivane/fonts/MaterialIcons-Regular.ttf"_s, 16);
    ASSERT_TRUE(font.isValid());
    EXPECT_TRUE(font.supportsCharacter(QChar(SymbolTable::fallbackGlyph)));
    for (const Symbol& symbol : SymbolTable::symbols()) {
        EXPECT_TRUE(font.supportsCharacter(QChar(symbol.glyph)))
            << qPrintable(QStringView(symbol.name).toString());
    }
}
