#include "demo/demo_catalogue.h"

#include "model/ean13.h"

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

namespace cartonpick::orders {

namespace {

struct Brand {
  std::string_view name;
  std::string_view companyPrefix;  ///< the first seven digits of its barcodes
};

constexpr Brand kHearthside = {"HEARTHSIDE", "5012746"};
constexpr Brand kBlueHarbour = {"BLUE HARBOUR", "5033851"};
constexpr Brand kLinden = {"LINDEN & SON", "4006917"};
constexpr Brand kPantryLane = {"PANTRY LANE", "5060412"};
constexpr Brand kCasaOlivo = {"CASA OLIVO", "8013294"};
constexpr Brand kManufaktur = {"MANUFAKTUR GRÜN", "4028365"};

struct Ware {
  std::string_view name;
  const Brand &brand;
};

constexpr std::array kFinishes = std::to_array<std::string_view>(
    {"WHITE",      "CREAM",       "SAGE GREEN",   "DUCK EGG BLUE", "NAVY",
     "MUSTARD",    "BLUSH PINK",  "CHARCOAL",     "TERRACOTTA",    "RED GINGHAM",
     "POLKA DOT",  "BLUE STRIPE", "WILD FLOWER",  "STRAWBERRY",    "HERB PRINT",
     "BUMBLE BEE", "RUSTIC",      "VINTAGE ROSE", "WOODLAND",      "NORDIC STAR"});

constexpr std::array kHomeWares = std::to_array<Ware>({
    {"ENAMEL MUG 350ML", kHearthside},
    {"STONEWARE BOWL 16CM", kHearthside},
    {"DINNER PLATE 27CM", kHearthside},
    {"SIDE PLATE 20CM", kHearthside},
    {"EGG CUP SET OF 2", kHearthside},
    {"BUTTER DISH WITH LID", kHearthside},
    {"MILK JUG 500ML", kHearthside},
    {"TEAPOT 1.2L", kHearthside},
    {"STORAGE TIN ROUND", kBlueHarbour},
    {"BREAD BIN", kBlueHarbour},
    {"CAKE TIN SET OF 3", kBlueHarbour},
    {"LUNCH BAG", kBlueHarbour},
    {"WATER BOTTLE 750ML", kBlueHarbour},
    {"PICNIC RUG 150X130CM", kBlueHarbour},
    {"TEA TOWEL PACK OF 2", kLinden},
    {"OVEN GLOVE DOUBLE", kLinden},
    {"APRON COTTON", kLinden},
    {"CUSHION COVER 45CM", kLinden},
    {"TABLE RUNNER 40X140CM", kLinden},
    {"NAPKINS PACK OF 4", kLinden},
    {"T-LIGHT HOLDER", kBlueHarbour},
    {"SCENTED CANDLE 180G", kBlueHarbour},
    {"DOORMAT 40X60CM", kLinden},
    {"PLANT POT 14CM", kHearthside},
});

constexpr std::array kFlavours = std::to_array<std::string_view>(
    {"SEA SALT", "ROSEMARY", "LEMON", "ORANGE", "GINGER", "CHILLI", "VANILLA", "HONEY",
     "BLACK PEPPER", "SMOKED PAPRIKA", "FENNEL", "CARAMEL"});

constexpr std::array kFoods = std::to_array<Ware>({
    {"SHORTBREAD 150G", kPantryLane},
    {"OATCAKES 200G", kPantryLane},
    {"CRACKERS 125G", kPantryLane},
    {"DARK CHOCOLATE BAR 100G", kPantryLane},
    {"FUDGE GIFT BOX 170G", kPantryLane},
    {"ROASTED ALMONDS 90G", kPantryLane},
    {"POPCORN SHARING BAG 80G", kPantryLane},
    {"INFUSED OLIVE OIL 250ML", kCasaOlivo},
    {"GRISSINI 120G", kCasaOlivo},
    {"TARALLI 240G", kCasaOlivo},
    {"WINE VINEGAR 500ML", kCasaOlivo},
    {"BISCOTTI 180G", kCasaOlivo},
});

// These are here for their length and their letters.
constexpr std::array kSpecialities = std::to_array<Ware>({
    {"GEBÄCKDOSE „GROSSMUTTERS KÜCHE“ MIT SCHARNIERDECKEL, EMAILLIERT, WEISS MIT BLAUEM RAND, 24 X "
     "18 X 12 CM",
     kManufaktur},
    {"Weißblech-Gießkanne mit langem Ausguss für Zimmerpflanzen, salbeigrün lackiert, 1,5 Liter",
     kManufaktur},
    {"CAFETIÈRE À PISTON POUR HUIT TASSES, VERRE BOROSILICATE, SOCLE EN LIÈGE NATUREL DU PORTUGAL",
     kHearthside},
    {"CRÈME BRÛLÉE RAMEKINS, SET OF 6, WITH CHEF'S BLOWTORCH AND RECIPE CARD \"À LA FRANÇAISE\"",
     kHearthside},
    {"Śliwki w czekoladzie z Łodzi, ręcznie zawijane, pudełko prezentowe ze wstążką, 350 g",
     kPantryLane},
    {"JALAPEÑO & PIÑA MERMELADA ARTESANA, TARRO DE CRISTAL CON TAPA DE TELA, EDICIÓN NAVIDEÑA, 340 "
     "G",
     kCasaOlivo},
    {"RØDGRØD BÆRSYLTETØY UTEN TILSATT SUKKER, GLASS MED SKRULOKK OG HÅNDSKREVET ETIKETT, 400 G",
     kPantryLane},
    {"Fußmatte „Willkommen zu Hause“ aus Kokosfaser, rutschfeste Rückseite, für draußen, 60 × 40 "
     "cm",
     kManufaktur},
});

/// Makes articles whose codes share the number of their ware and differ in the letter of the
/// variant: "20138C".
class CatalogueMaker {
 public:
  void addWares(std::span<const Ware> wares, std::span<const std::string_view> variants) {
    for (const Ware &ware : wares) {
      m_wareNumber += kWareNumberStep;
      for (std::size_t i = 0; i < variants.size(); ++i) {
        add(ware.brand, static_cast<char>('A' + i),
            std::string(variants[i]) + ' ' + std::string(ware.name));
      }
    }
  }

  void addSpecialities(std::span<const Ware> wares) {
    for (const Ware &ware : wares) {
      m_wareNumber += kWareNumberStep;
      add(ware.brand, 'A', std::string(ware.name));
    }
  }

  std::vector<DemoArticle> take() { return std::move(m_articles); }

 private:
  static constexpr std::size_t kFirstWareNumber = 20100;
  static constexpr std::size_t kWareNumberStep = 38;

  void add(const Brand &brand, char variant, std::string description) {
    const std::string serial = std::to_string(10000 + m_articles.size());
    m_articles.push_back({.article = {.barcode = ean13(std::string(brand.companyPrefix) + serial),
                                      .item = std::to_string(m_wareNumber) + variant,
                                      .description = std::move(description)},
                          .brand = std::string(brand.name)});
  }

  std::size_t m_wareNumber = kFirstWareNumber;
  std::vector<DemoArticle> m_articles;
};

}  // namespace

std::vector<DemoArticle> demoCatalogue() {
  CatalogueMaker maker;
  maker.addWares(kHomeWares, kFinishes);
  maker.addWares(kFoods, kFlavours);
  maker.addSpecialities(kSpecialities);
  return maker.take();
}

}  // namespace cartonpick::orders
