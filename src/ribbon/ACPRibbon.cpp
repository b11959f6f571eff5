#include "ribbon/ACPRibbon.h"

#include "companion/VbText.h"
#include "frame/Platform.h"

#include <QtGlobal>

// The skins' pictures are compiled into the library; a static library must register them itself.
static void initRibbonSkins() { Q_INIT_RESOURCE(ribbon_skins); }

namespace tq7 {

namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kBlank = QStringLiteral(" ");

[[noreturn]] void subscript() { throw Error{err::SubscriptOutOfRange, QStringLiteral("Subscript out of range")}; }

// The pictures of a skin in the order they are loaded, with the piece each one goes to.
struct SkinLoad {
  int id;
  Piece piece;
};
constexpr SkinLoad kSkinLoads[] = {
    {101, Piece::Barra2},           {102, Piece::BarraLeft},        {103, Piece::BarraRight},
    {118, Piece::Cat_Dlg},          {119, Piece::Cat_Dlg_on},       {120, Piece::Cat_Dlg_over},
    {121, Piece::Cat_Left_off},     {122, Piece::Cat_Center_off},   {123, Piece::Cat_Right_off},
    {124, Piece::Cat_Left_on},      {125, Piece::Cat_Center_on},    {126, Piece::Cat_Right_on},
    {127, Piece::Tab_left},         {128, Piece::Tab_center},       {129, Piece::Tab_right},
    {130, Piece::Tab_left_over},    {131, Piece::Tab_center_over},  {132, Piece::Tab_right_over},
    {133, Piece::Glip_off},         {134, Piece::Glip_on},          {135, Piece::Button_left_over},
    {136, Piece::Button_center_over}, {137, Piece::Button_right_over}, {138, Piece::Button_left},
    {139, Piece::Button_center},    {140, Piece::Button_right},
};

// Where the button templates stand at design time: under the bar's visible height, so that the
// element 0 that each button layout shows is neither seen nor reached by the mouse.
constexpr double kDesignTop = 1800;

}  // namespace

ACPRibbon::ACPRibbon() : Control(QStringLiteral("ACPRibbon")) {
  initRibbonSkins();
  designPieces();
  applySkin();  // the pictures the bar was designed with: the first skin
  // Creation: the strip is lifted so that its top 26 pixels lie above the bar.
  RibbonPiece& barra = pieces_.design(Piece::Barra2);
  barra.Top = -390;
  pieces_.design(Piece::BarraLeft).Top = barra.Top;
  pieces_.design(Piece::BarraRight).Top = barra.Top;
  setHeight(barra.Height);  // the resize step then takes the height it wants
  barra.Width = 30720;
}

void ACPRibbon::designPieces() {
  auto image = [&](Piece a, double l, double t, double w, double h, bool stretch, bool visible) {
    RibbonPiece& p = pieces_.design(a);
    p.kind = PieceKind::Image;
    p.Left = l, p.Top = t, p.Width = w, p.Height = h;
    p.Stretch = stretch;
    p.Visible = visible;
  };
  auto label = [&](Piece a, double w, double h, bool autoSize, double top = 0) {
    RibbonPiece& p = pieces_.design(a);
    p.kind = PieceKind::Label;
    p.Top = top, p.Width = w, p.Height = h;
    p.AutoSize = autoSize;
    p.Visible = false;
  };
  image(Piece::Barra2, 0, 0, 405, 2130, true, true);
  image(Piece::BarraLeft, 0, 0, 165, 2130, false, true);
  image(Piece::BarraRight, 480, 0, 165, 2130, false, true);
  for (Piece a : {Piece::Tab_left, Piece::Tab_right, Piece::Tab_left_over, Piece::Tab_right_over})
    image(a, 0, 0, 150, 360, false, false);
  image(Piece::Tab_center, 0, 0, 270, 360, true, false);
  image(Piece::Tab_center_over, 0, 0, 270, 360, true, false);
  label(Piece::TabMouse, 735, 360, false);
  label(Piece::Tab_caption, 630, 240, true, 60);
  tq7::Font captionFont;
  captionFont.Name = QStringLiteral("MS Sans Serif");
  captionFont.Size = 9.75;
  captionFont.Charset = 222;
  pieces_.design(Piece::Tab_caption).font = captionFont;

  image(Piece::Cat_Left_off, 0, 360, 60, 1335, false, false);
  image(Piece::Cat_Left_on, 0, 360, 60, 1335, false, false);
  image(Piece::Cat_Center_off, 0, 360, 75, 1335, true, false);
  image(Piece::Cat_Center_on, 0, 360, 60, 1335, true, false);
  image(Piece::Cat_Right_off, 0, 360, 75, 1335, false, false);
  image(Piece::Cat_Right_on, 0, 360, 75, 1335, false, false);
  label(Piece::CatMouse, 375, 1350, false, 360);
  label(Piece::Cat_Caption, 615, 240, true, 1400);
  pieces_.design(Piece::Cat_Caption).font = captionFont;
  for (Piece a : {Piece::Cat_Dlg, Piece::Cat_Dlg_on, Piece::Cat_Dlg_over}) image(a, 0, 0, 225, 210, false, false);

  for (Piece a : {Piece::Button_left, Piece::Button_right, Piece::Button_left_over, Piece::Button_right_over})
    image(a, 0, kDesignTop, 45, 990, false, false);
  image(Piece::Button_center, 0, kDesignTop, 735, 990, true, false);
  image(Piece::Button_center_over, 0, kDesignTop, 735, 990, true, false);
  image(Piece::Button_Icon, 0, kDesignTop, 615, 495, false, false);
  pieces_.design(Piece::Button_Icon).SizesToPicture = true;
  label(Piece::Button_Caption, 480, 195, true, kDesignTop);
  pieces_.design(Piece::Button_Caption).Centred = true;
  label(Piece::ButMouse, 375, 990, false, kDesignTop);
  image(Piece::Glip_on, 0, kDesignTop, 75, 60, false, false);
  image(Piece::Glip_off, 0, kDesignTop, 75, 60, false, false);
}

// ---- The lists -------------------------------------------------------------------------------------

bool ACPRibbon::AddTab(const QString& zID, QString& zCaption) {
  ++totalTab_;
  const int i = totalTab_ - 1;
  if (!inRange(i, kTabs)) subscript();  // the count stays raised
  tabs_[size_t(i)].id = zID;
  zCaption = vb::Replace(zCaption, kCrLf, kBlank);
  tabs_[size_t(i)].caption = zCaption;
  if (currentTab_.isEmpty()) currentTab_ = zID;
  return false;
}

bool ACPRibbon::AddCat(const QString& zID, const QString& zTab, QString& zCaption, bool zDlgButton) {
  ++totalCat_;
  const int i = totalCat_ - 1;
  if (!inRange(i, kCats)) subscript();
  cats_[size_t(i)].id = zID;
  cats_[size_t(i)].tab = zTab;
  zCaption = vb::Replace(zCaption, kCrLf, kBlank);
  cats_[size_t(i)].caption = zCaption;
  cats_[size_t(i)].dlg = zDlgButton;
  return false;
}

bool ACPRibbon::AddButton(const QString& zID, const QString& zSubCat, QString& zCaption, int16_t zPicture,
                          bool zMore, const QString& zToolTip) {
  auto slot = [this]() -> ButtonEntry& {
    const int i = totalButton_ - 1;
    if (!inRange(i, kButtons)) subscript();
    return buttons_[size_t(i)];
  };
  step([&] {
    if (totalButton_ == INT16_MAX) throw Error{err::Overflow, QStringLiteral("Overflow")};
    ++totalButton_;
  });
  step([&] { slot().id = zID; });
  step([&] { slot().cat = zSubCat; });
  step([&] { slot().caption = zCaption; });  // line breaks kept: a button caption may have two lines
  if (zToolTip.isEmpty()) {
    if (zCaption.contains(kCrLf)) zCaption = vb::Replace(zCaption, kCrLf, kBlank);
    step([&] { slot().toolTip = zCaption; });
  } else {
    const QString tip = vb::Replace(zToolTip, kCrLf, kBlank);
    step([&] { slot().toolTip = tip; });
  }
  step([&] {
    if (!imageList_) throw Error{91, QStringLiteral("Object variable or With block variable not set")};
    const QImage& picture = imageList_->ListImages().Item(zPicture).Picture;
    slot().picture = picture;
  });
  step([&] { slot().more = zMore; });
  return false;
}

int16_t ACPRibbon::Mark() {
  MarkTotalButton = totalButton_;
  return MarkTotalButton;
}

int16_t ACPRibbon::ResetToMark() {
  totalButton_ = MarkTotalButton;  // what lies above stays until later buttons overwrite it
  return totalButton_;
}

// ---- Properties --------------------------------------------------------------------------------------

void ACPRibbon::setTheme(int16_t value) {
  if (value < 0 || value > 2) value = 0;
  theme_ = value;
  ++propertyChanges_;
  applySkin();  // the layout is not redone: the application calls Refresh
  notifyChanged();
}

void ACPRibbon::setButtonCenter(const QVariant& value) {
  step([&] {
    if (value.isValid() && !value.canConvert<bool>()) throw Error{err::TypeMismatch, QStringLiteral("Type mismatch")};
    buttonCenter_ = value.toBool();
  });
  ++propertyChanges_;
}

void ACPRibbon::setFont(const tq7::Font& f) {
  pieces_.design(Piece::Button_Caption).font = f;
  notifyChanged();
}

QImage ACPRibbon::LoadBackground() const { return LoadSkinPicture(141, skinType(theme_)).picture; }

void ACPRibbon::applySkin() {
  const SkinColours& c = skinColours(theme_);
  pieces_.design(Piece::Cat_Caption).ForeColor = c.Cat_Caption;
  tabCaptionColor_ = c.TabCaptionColor;
  tabCaptionColorActive_ = c.TabCaptionColorActive;
  pieces_.design(Piece::Button_Caption).ForeColor = c.Button_Caption;
  backColor_ = c.BackColor;
  foreColor_ = c.ForeColor;
  // Only the templates take the new pictures; loaded elements keep theirs until they are loaded anew.
  const QString type = skinType(theme_);
  for (const SkinLoad& l : kSkinLoads) {
    step([&] {
      const SkinPicture p = LoadSkinPicture(l.id, type);
      setPicture(pieces_.design(l.piece), p.picture, p.picture2x);
    });
  }
}

void ACPRibbon::ReadProperties(const PropertyBag& bag) {
  // The stored value only: the skin is not applied.
  step([&] { theme_ = vb::CInt(bag.ReadProperty(QStringLiteral("Theme"), 0).toDouble()); });
  step([&] { buttonCenter_ = bag.ReadProperty(QStringLiteral("ButtonCenter"), false).toBool(); });
  // "BackColor" and "ForeColor" are written for the container and never read back: the skin decides.
}

void ACPRibbon::WriteProperties(PropertyBag& bag) const {
  bag.WriteProperty(QStringLiteral("Theme"), theme_);
  bag.WriteProperty(QStringLiteral("ButtonCenter"), buttonCenter_);
  bag.WriteProperty(QStringLiteral("BackColor"), QVariant::fromValue<uint>(backColor_));
  bag.WriteProperty(QStringLiteral("ForeColor"), QVariant::fromValue<uint>(foreColor_));
}

// ---- Pieces ---------------------------------------------------------------------------------------------

void ACPRibbon::setCaption(RibbonPiece& label, const QString& caption) {
  label.Caption = caption;
  if (label.AutoSize) {
    const QSizeF s = measure(label.font, caption);
    label.Width = s.width();
    label.Height = s.height();
  }
}

void ACPRibbon::setPicture(RibbonPiece& image, const QImage& picture, const QImage& picture2x) {
  image.Picture = picture;
  image.Picture2x = picture2x;
  if (image.SizesToPicture && !picture.isNull()) {
    const QSizeF s = picture.deviceIndependentSize();
    image.Width = s.width() * TwipsPerPixel;
    image.Height = s.height() * TwipsPerPixel;
  }
}

QSizeF ACPRibbon::measure(const tq7::Font& font, const QString& text) {
  Platform& pf = platform();
  MeasureCache* cache = nullptr;
  for (MeasureCache& c : measured_) {
    if (c.platform == &pf && c.font == font) {
      cache = &c;
      break;
    }
  }
  if (!cache) {
    // The least recently made cache gives way.
    std::swap(measured_[0], measured_[1]);
    cache = &measured_[1];
    cache->font = font;
    cache->platform = &pf;
    cache->sizes.clear();
  }
  if (const auto it = cache->sizes.constFind(text); it != cache->sizes.constEnd()) return it.value();
  // A label breaks its text at each line feed (CR LF or LF alone) and is as wide as its widest line.
  double width = 0;
  int lines = 0;
  for (QStringView line : QStringView(text).split(u'\n')) {
    if (line.endsWith(u'\r')) line.chop(1);
    width = std::max(width, pf.textWidth(font, line.toString()));
    ++lines;
  }
  const QSizeF s(width, pf.textHeight(font) * std::max(lines, 1));
  cache->sizes.insert(text, s);
  return s;
}

}  // namespace tq7
