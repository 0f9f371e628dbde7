#include "platform/window/text_face.h"

#include "platform/base/casemap.h"
#include "platform/window/text_shape.h"
#include "platform/window/toolkit_internal.h"

#include <QCoreApplication>
#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QLocale>
#include <QRawFont>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <cmath>

// The toolkit's macro needs a function outside all namespaces.
static void initFontResources() { Q_INIT_RESOURCE(fonts); }

namespace platform {
namespace {

constexpr int kMaxEm = 2048;
const QString kProgramFamily = QStringLiteral("Quillmere Sans");

// Names that stand for the face that comes with the program.
constexpr std::array kProgramFaces{
    u"MS Sans Serif", u"MS Shell Dlg",   u"MS Shell Dlg 2", u"Microsoft Sans Serif",
    u"Tahoma",        u"Arial",          u"Helvetica",      u"Helv",
    u"System",        u"Liberation Sans"};

TextView withoutBlanks(TextView name) {
    while (!name.empty() && name.front() == u' ') name.remove_prefix(1);
    while (!name.empty() && name.back() == u' ') name.remove_suffix(1);
    return name;
}

bool g_started = false;
QtMessageHandler g_olderHandler = nullptr;

// While it looks for a face that has a script, the toolkit tells of every one that doesn't.
void withoutSearchMessages(QtMsgType type, const QMessageLogContext& context,
                           const QString& message) {
    if (message.contains(QLatin1String("OpenType support missing for"))) return;
    g_olderHandler(type, context, message);
}

void endFonts() {
    clearTextCaches();
    qInstallMessageHandler(g_olderHandler);
    g_started = false;
}

// The first use of a face after the start of the application object.
void startFonts() {
    if (g_started) return;
    g_started = true;
    g_olderHandler = qInstallMessageHandler(withoutSearchMessages);
    qAddPostRoutine(endFonts);
    initFontResources();
    for (const char* style : {"Regular", "Bold", "Italic", "BoldItalic"}) {
        QFontDatabase::addApplicationFont(
            QStringLiteral(":/fonts/QuillmereSans-%1.ttf").arg(QLatin1String(style)));
    }
}

// name: of a wish that is held to its limits.
QString familyOf(TextView name) {
    for (const TextView known : kProgramFaces) {
        if (lowerCase(known) == name) return kProgramFamily;
    }
    const QString family = toQt(name);
    return !family.isEmpty() && QFontDatabase::hasFamily(family) ? family : kProgramFamily;
}

// The Han characters of one code differ between the languages.
QString eastAsianFamily() {
    const QLocale locale = QLocale::system();
    const char* region = "SC";
    if (locale.language() == QLocale::Japanese) {
        region = "JP";
    } else if (locale.language() == QLocale::Korean) {
        region = "KR";
    } else if (locale.language() == QLocale::Chinese &&
               locale.script() == QLocale::TraditionalHanScript) {
        region = locale.territory() == QLocale::HongKong ? "HK" : "TC";
    }
    return QStringLiteral("Noto Sans CJK %1").arg(QLatin1String(region));
}

// What the toolkit tries in this order, ahead of what the system would choose. The face stands
// twice: for a script that it cannot shape the toolkit puts another face in the first place, and
// the digits beside that script shall still be this one's.
QStringList familiesOf(TextView name) {
    static const QString eastAsian = eastAsianFamily();
    const QString family = familyOf(name);
    QStringList families{family, family};
    if (QFontDatabase::hasFamily(eastAsian)) families << eastAsian;
    return families;
}

std::unique_ptr<QFont> pictographsBeside(const QFont& font) {
    const QString emoji = QStringLiteral("Noto Color Emoji");
    if (!QFontDatabase::hasFamily(emoji)) return nullptr;
    auto pictographs = std::make_unique<QFont>(font);
    pictographs->setFamilies(QStringList(emoji) + font.families());
    return pictographs;
}

QFont fontOf(const FaceWish& wish, int em) {
    QFont font;
    font.setFamilies(familiesOf(wish.name));
    font.setPixelSize(em);
    font.setWeight(static_cast<QFont::Weight>(wish.weight));
    font.setItalic(wish.italic);
    font.setKerning(false);
    font.setHintingPreference(QFont::PreferFullHinting);
    font.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    return font;
}

// Rows are whole: both parts of a line are rounded up, so that nothing is cut.
int roundedUp(qreal length) { return static_cast<int>(std::ceil(length - 1.0 / 128)); }
int lineHeight(const QFont& font) {
    const QFontMetricsF metrics(font);
    return roundedUp(metrics.ascent()) + roundedUp(metrics.descent());
}

// The em height of the largest font whose lines are at most that high.
int emOfLineHeight(const FaceWish& wish, int height) {
    constexpr int kSample = 1000;
    const QFontMetricsF sample(fontOf(wish, kSample));
    const qreal perEm = (sample.ascent() + sample.descent()) / kSample;
    int em = static_cast<int>(std::clamp<qreal>(height / perEm, 1, kMaxEm));
    while (em > 1 && lineHeight(fontOf(wish, em)) > height) --em;
    return em;
}

// Whether the face's own rules can change a character of its simple scripts because of its
// neighbours. Rules for combining marks don't count: marks are always shaped.
bool hasContextRules(const QFont& font) {
    const QByteArray table = QRawFont::fromFont(font).fontTable("GSUB");
    const auto at = [&](qsizetype offset) -> unsigned {
        if (offset < 0 || offset + 2 > table.size()) return 0;
        return qFromBigEndian<quint16>(table.constData() + offset);
    };
    const qsizetype list = at(6);  // of features: a count, then records of a tag and an offset
    for (qsizetype i = 0; i < at(list); ++i) {
        const QByteArray tag = table.mid(list + 2 + i * 6, 4);
        for (const char* rule : {"liga", "clig", "calt", "rlig", "rclt"}) {
            if (tag == rule) return true;
        }
    }
    return false;
}

FaceMetrics metricsOf(const QFont& font) {
    const QFontMetricsF toolkit(font);
    FaceMetrics metrics;
    metrics.em = font.pixelSize();
    metrics.ascent = std::max(1, roundedUp(toolkit.ascent()));
    metrics.descent = roundedUp(toolkit.descent());
    metrics.externalLeading = std::max(0, qRound(toolkit.leading()));
    metrics.averageWidth = std::max(1, qRound(toolkit.averageCharWidth()));
    metrics.maxWidth = std::max(metrics.averageWidth, roundedUp(toolkit.maxWidth()));
    metrics.lineThickness = std::max(1, qRound(toolkit.lineWidth()));
    const int below = std::max(1, qRound(toolkit.underlinePos()));
    metrics.underlineTop =
        std::min(metrics.ascent + below, metrics.height() - metrics.lineThickness);
    metrics.strikeOutTop = metrics.ascent - qRound(toolkit.strikeOutPos());
    return metrics;
}

QFont wishedFont(const FaceWish& wish) {
    int em = wish.height < 0
                 ? static_cast<int>(std::min<std::int64_t>(-std::int64_t{wish.height}, kMaxEm))
                 : 16;
    if (wish.height > 0) em = emOfLineHeight(wish, wish.height);
    QFont font = fontOf(wish, em);
    if (wish.width != 0) {
        const qreal natural = std::max(QFontMetricsF(font).averageCharWidth(), 0.1);
        const qreal percent = std::abs(static_cast<qreal>(wish.width)) / natural * 100;
        const qreal most = std::min(4000.0, 200.0 * kMaxEm / em);  // the toolkit's limit, and ours
        font.setStretch(static_cast<int>(std::clamp(std::round(percent), 1.0, most)));
    }
    return font;
}

std::vector<std::shared_ptr<Face>>& keptFaces() {
    static std::vector<std::shared_ptr<Face>> faces;  // the one that was wanted last comes first
    return faces;
}

std::shared_ptr<Face>& stockFace() {
    static std::shared_ptr<Face> face;
    return face;
}

// Wishes that come out the same share a face.
FaceWish heldToLimits(FaceWish wish) {
    wish.name = lowerCase(withoutBlanks(wish.name));
    wish.weight = wish.weight == 0 ? 400 : std::clamp(wish.weight, 1, 1000);
    return wish;
}

}  // namespace

Face::Face(std::uint32_t newId, FaceWish newWish)
    : id(newId), wish(std::move(newWish)), font(std::make_unique<QFont>(wishedFont(wish))),
      pictographs(pictographsBeside(*font)) {
    metrics = metricsOf(*font);
    contextFree = metrics.em <= kMaxGlyphEm && !hasContextRules(*font);
}

Face::~Face() = default;

std::shared_ptr<Face> faceFor(const FaceWish& asked) {
    startFonts();
    const FaceWish wish = heldToLimits(asked);
    auto& faces = keptFaces();
    const auto known = std::find_if(faces.begin(), faces.end(),
                                    [&](const auto& face) { return face->wish == wish; });
    if (known != faces.end()) {
        std::rotate(faces.begin(), known, known + 1);
        return faces.front();
    }
    static std::uint32_t lastId = 0;
    if (faces.size() == kKeptFaces) faces.pop_back();
    faces.insert(faces.begin(), std::make_shared<Face>(++lastId, wish));
    return faces.front();
}

Face& faceOf(const FontRecord& font) {
    if (font.data) return *font.data->face;
    if (!stockFace()) stockFace() = faceFor({u"MS Sans Serif"});
    return *stockFace();
}

QFont toolkitFontOf(HFONT hFont) {
    const FontRecord* known = fontTable().find(hFont);
    const Face& face = faceOf(known != nullptr ? *known : FontRecord());
    QFont font = *face.font;
    font.setUnderline(face.wish.underline);
    font.setStrikeOut(face.wish.strikeOut);
    return font;
}

void clearTextCaches() {
    keptFaces().clear();
    stockFace().reset();
    clearShapedText();
}

std::vector<Text> fontFamilies() {
    startFonts();
    std::vector<Text> names(kProgramFaces.begin(), kProgramFaces.end());
    for (const QString& family : QFontDatabase::families()) {
        names.push_back(toText(family));
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

}  // namespace platform
