// How captions are broken, made smaller and cut, so that none is lost or illegible.
#include "adapters/qt/caption.h"
#include "adapters/qt/event_loop.h"
#include "adapters/qt/look.h"

#include <QFontMetricsF>

#include <gtest/gtest.h>

namespace kova {
namespace {

class Captions : public testing::Test {
  protected:
    static std::vector<look::Caption> set(const QStringList& texts, const QSizeF& room,
                                          look::CaptionSizes sizes = look::CaptionSizes::Common) {
        std::vector<look::CaptionPlace> places;
        for (const QString& text : texts)
            places.push_back({text, room});
        return look::setCaptions(places, look::font({"Tahoma", 11, true}, {1, 1}), 1, sizes);
    }
    QtEventLoop loop{QtEventLoop::Time::Stepped};
    const QString ship = "Donaudampfschifffahrtsgesellschaftskasse";
};

TEST_F(Captions, OfEightActivitiesAreLegibleAndAlike) {
    const auto captions =
        set({"Fondo cassa iniziale", "Versamento", "Prelievo per versamento in banca", ship}, {60, 80});
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(captions[i].whole);
        EXPECT_EQ(captions[i].font, captions[0].font);
        EXPECT_GE(captions[i].font.pixelSize(), 11);
    }
    EXPECT_TRUE(captions[3].whole);
    EXPECT_GE(captions[3].font.pixelSize(), 10);
    EXPECT_TRUE(set({"1"}, {60, 80})[0].font.bold()) << "what fits is as designed";
}

TEST_F(Captions, LoseNothingThatTheyDoNotMarkAsCut) {
    const QString text = "Bar-Einzahlung auf das " + ship + " 12/2026";
    int whole = 0;
    for (int width = 12; width < 200; width += 4)
        for (const int height : {14, 40, 90}) {
            const auto caption = set({text}, QSizeF(width, height), look::CaptionSizes::Own)[0];
            const QFontMetricsF metrics(caption.font);
            EXPECT_LE(static_cast<double>(caption.lines.size() - 1) * metrics.lineSpacing(), height);
            if (!caption.whole) {
                EXPECT_TRUE(caption.lines.last().endsWith(QChar(0x2026))) << width << 'x' << height;
                continue;
            }
            ++whole;
            for (const QString& line : caption.lines)
                EXPECT_LE(metrics.horizontalAdvance(line), width);
            EXPECT_EQ(caption.lines.join("").remove('-').remove(' '), QString(text).remove('-').remove(' '));
        }
    EXPECT_GT(whole, 20);
}

} // namespace
} // namespace kova
