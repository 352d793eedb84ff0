#include "adapters/qt/look.h"

#include "adapters/qt/display.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QHash>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <optional>

namespace kova::look {
namespace {

// The smallest sizes of fonts, in design pixels; on the screen they have as many at least.
constexpr double LeastBold = LeastCaption;
constexpr double LeastCommon = LeastCaption;
constexpr double LeastRegular = 10;
constexpr qsizetype LeastPiece = 3; // letters before a hyphen

// Windows has Tahoma, for which captions and widths were chosen; condensed DejaVu runs as wide.
QString installedFamily(const QString& wanted) {
    for (const QString& one : {wanted, QString("DejaVu Sans Condensed"), QString("Noto Sans")})
        if (QFontDatabase::hasFamily(one))
            return one;
    return standInFamily();
}

// Asking the font database takes longer than drawing the text does. Signs of waiting ask on other threads.
QString family(const QString& wanted) {
    static std::mutex mutex;
    static QHash<QString, QString> known;
    const std::lock_guard lock(mutex);
    auto found = known.find(wanted);
    if (found == known.end())
        found = known.insert(wanted, installedFamily(wanted));
    return *found;
}

int flags(const TextStyle& style) {
    return static_cast<int>(style.alignment) | (style.wrapped ? Qt::TextWordWrap : Qt::TextSingleLine);
}

bool fits(const QString& text, const QFont& font, const QSizeF& room, const TextStyle& style) {
    const QRectF unlimitedHeight(0, 0, room.width(), 1e6);
    const QRectF needed = QFontMetricsF(font).boundingRect(unlimitedHeight, flags(style), text);
    return needed.width() <= room.width() + 0.5 && needed.height() <= room.height() + 0.5;
}

enum class Hyphens { Never, InOverlongWords };

int pixelsOf(double design, double unit) {
    return static_cast<int>(std::lround(design * std::max(1.0, unit)));
}

/// The fonts to try, each running narrower than the one before.
std::vector<QFont> fontsFrom(QFont font, double unit) {
    std::vector<QFont> fonts;
    const auto shrink = [&](int least) {
        for (int size = font.pixelSize(); size >= least; --size) {
            font.setPixelSize(size);
            fonts.push_back(font);
        }
    };
    if (font.bold()) {
        shrink(pixelsOf(LeastBold, unit));
        font.setBold(false);
    }
    shrink(pixelsOf(LeastRegular, unit));
    if (fonts.empty())
        fonts.push_back(font);
    return fonts;
}

bool isVowel(QChar letter) {
    return QString("aeiouyàèéìòùäöü").contains(letter.toLower());
}

/// How many letters stay before the hyphen; 0 where none can. The syllables of Italian begin with a consonant
/// before a vowel, and those of German mostly.
qsizetype lettersBeforeHyphen(const QString& word, const QFontMetricsF& metrics, double width) {
    qsizetype anywhere = 0;
    for (qsizetype count = word.size() - 2; count >= LeastPiece; --count) {
        if (metrics.horizontalAdvance(word.left(count) + '-') > width)
            continue;
        anywhere = std::max(anywhere, count);
        const QChar next = word[count];
        if (next.isLetter() && !isVowel(next) && next.toLower() != 'h' && isVowel(word[count + 1]))
            return count;
    }
    return anywhere;
}

/// Pieces that stay together; each but the first of a word follows a hyphen or stroke of the text itself.
struct Piece {
    QString text;
    bool beginsWord;
};

std::vector<Piece> piecesOf(const QString& text) {
    std::vector<Piece> pieces;
    for (const QString& word : text.simplified().split(' ', Qt::SkipEmptyParts)) {
        qsizetype start = 0;
        for (qsizetype i = 0; i < word.size(); ++i)
            if (const bool last = i + 1 == word.size();
                last || ((word[i] == '-' || word[i] == '/') && i > 1)) {
                pieces.push_back({word.mid(start, i + 1 - start), start == 0});
                start = i + 1;
            }
    }
    return pieces;
}

/// Nothing when a word is too wide.
std::optional<QStringList> linesOf(const QString& text, const QFontMetricsF& metrics, double width,
                                   Hyphens hyphens) {
    const auto fits = [&](const QString& line) { return metrics.horizontalAdvance(line) <= width; };
    QStringList lines;
    QString line;
    for (const Piece& piece : piecesOf(text)) {
        QString rest = piece.text;
        QString glue = piece.beginsWord && !line.isEmpty() ? " " : "";
        while (!fits(line + glue + rest)) {
            if (!fits(rest)) {
                if (hyphens == Hyphens::Never)
                    return std::nullopt;
                const double room = width - metrics.horizontalAdvance(line + glue);
                const qsizetype letters = lettersBeforeHyphen(rest, metrics, room);
                if (letters == 0 && line.isEmpty())
                    return std::nullopt;
                if (letters > 0)
                    line += glue + rest.left(letters) + '-';
                rest = rest.mid(letters);
            }
            lines << line;
            line.clear();
            glue.clear();
        }
        line += glue + rest;
    }
    return lines << line;
}

qsizetype mostLines(const QFontMetricsF& metrics, double height) {
    return std::max(qsizetype{1},
                    static_cast<qsizetype>((height + metrics.leading() + 0.5) / metrics.lineSpacing()));
}

std::optional<Caption> fitting(const CaptionPlace& place, const QFont& font, Hyphens hyphens) {
    const QFontMetricsF metrics(font);
    auto lines = linesOf(place.text, metrics, place.room.width(), hyphens);
    if (!lines || lines->size() > mostLines(metrics, place.room.height()))
        return std::nullopt;
    return Caption{font, std::move(*lines), true};
}

/// The number of the first font, from `first` on, in which the text fits; of all fonts where it does in none.
std::size_t firstFitting(const CaptionPlace& place, const std::vector<QFont>& fonts, std::size_t first) {
    while (first < fonts.size() && !fitting(place, fonts[first], Hyphens::Never))
        ++first;
    return first;
}

Caption setFrom(const CaptionPlace& place, const std::vector<QFont>& fonts, std::size_t first) {
    for (const Hyphens hyphens : {Hyphens::Never, Hyphens::InOverlongWords})
        for (std::size_t i = first; i < fonts.size(); ++i)
            if (auto caption = fitting(place, fonts[i], hyphens))
                return *caption;
    return cutCaption(place, fonts.back());
}

} // namespace

QFont font(const Font& design, const Scale& scale) {
    QFont result(family(QString::fromStdString(design.face)));
    result.setPixelSize(
        std::max(6, static_cast<int>(std::lround(design.points / PointsPerPixel * scale.smaller()))));
    result.setBold(design.bold);
    return result;
}

std::vector<Caption> setCaptions(const std::vector<CaptionPlace>& places, const QFont& font, double unit,
                                 CaptionSizes sizes) {
    const std::vector<QFont> fonts = fontsFrom(font, unit);
    std::size_t first = 0;
    if (sizes == CaptionSizes::Common) {
        const auto least = std::ranges::find_if(fonts, [&](const QFont& one) {
            return !one.bold() && one.pixelSize() <= pixelsOf(LeastCommon, unit);
        });
        const auto last = std::min(static_cast<std::size_t>(least - fonts.begin()), fonts.size() - 1);
        for (const CaptionPlace& place : places)
            first = std::min(firstFitting(place, fonts, first), last);
    }
    std::vector<Caption> captions;
    captions.reserve(places.size());
    for (const CaptionPlace& place : places)
        captions.push_back(setFrom(place, fonts, first));
    return captions;
}

Caption cutCaption(const CaptionPlace& place, const QFont& font) {
    const QFontMetricsF metrics(font);
    const double width = place.room.width();
    const QStringList lines = linesOf(place.text, metrics, width, Hyphens::InOverlongWords)
                                  .value_or(QStringList{place.text.simplified()});
    const qsizetype most = mostLines(metrics, place.room.height());
    QStringList shown = lines.mid(0, most);
    QString& last = shown.back();
    if (shown.size() < lines.size()) {
        if (last.endsWith('-'))
            last.chop(1);
        last += QChar(0x2026);
    }
    last = metrics.elidedText(last, Qt::ElideRight, width);
    return {font, shown, false};
}

void drawCaption(QPainter& painter, const QRectF& area, const Caption& caption, Qt::Alignment alignment) {
    painter.setFont(caption.font);
    painter.drawText(area, static_cast<int>(alignment), caption.lines.join('\n'));
}

QFont fitted(const QString& text, QFont font, const QSizeF& room, const TextStyle& style) {
    int pixels = font.pixelSize();
    while (pixels > style.smallestPixels && !fits(text, font, room, style))
        font.setPixelSize(--pixels);
    return font;
}

void drawText(QPainter& painter, const QRectF& area, const QString& text, const QFont& font,
              const TextStyle& style) {
    const QFont size = fitted(text, font, area.size(), style);
    painter.setFont(size);
    if (fits(text, size, area.size(), style))
        painter.drawText(area, flags(style), text);
    else
        drawCaption(painter, area, cutCaption({text, area.size()}, size), style.alignment);
}

} // namespace kova::look
