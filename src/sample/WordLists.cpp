#include "sample/WordLists.h"

namespace quillform::sample {

namespace {

using Words = std::string_view[];
using Cities = Country::City[];

constexpr Words germanPatterns = {"* & Söhne", "Haus *", "* Handels-GmbH", "Gebrüder *"};
constexpr Words germanFamilies = {"Bäumler",      "Grünwald", "Köhler",   "Meißner",
                                  "Österreicher", "Reuß",     "Schröder", "Vogt"};
constexpr Words germanNames = {"Anke", "Bärbel", "Dieter", "Jörg", "Käthe", "Rainer", "Sabine", "Uwe"};
constexpr Words germanStreets = {"Lindenstraße #", "Am Marktplatz #", "Mühlgasse #", "Hafenweg #"};
constexpr Cities germanCities = {{"Hamburg", "20095"}, {"Köln", "50667"}, {"München", "80331"}, {"Nürnberg", "90402"}};

constexpr Words frenchPatterns = {"Maison *", "* Frères", "Les Ateliers *", "* et Cie"};
constexpr Words frenchFamilies = {"Beauchêne", "Corbière", "Delacroix", "Faure",
                                  "Garçon",    "Lefèvre",  "Noël",      "Rouvière"};
constexpr Words frenchNames = {"Aurélie", "Benoît", "Chloé", "François", "Hélène", "Jérôme", "Maëlle", "Thierry"};
constexpr Words frenchStreets = {"#, rue des Tanneurs", "#, quai Saint-Michel", "#, place de l'Étoile",
                                 "#, allée des Chênes"};
constexpr Cities frenchCities = {{"Besançon", "25000"}, {"Lyon", "69002"}, {"Nîmes", "30000"}, {"Orléans", "45000"}};

constexpr Words britishPatterns = {"* & Daughters Ltd", "The * Pantry", "* of England", "* and Wren"};
constexpr Words britishFamilies = {"Ashdown",  "Bramley",   "Carrow", "Fenwick",
                                   "Halloran", "Marchbank", "O'Dell", "Thistlewood"};
constexpr Words britishNames = {"Alastair", "Beatrice", "Duncan", "Fiona", "Graham", "Imogen", "Nigel", "Rosalind"};
constexpr Words britishStreets = {"# Bridge Street", "# Castle Lane", "# Millbrook Road", "# The Shambles"};
constexpr Cities britishCities = {
    {"Bath", "BA1 1LN"}, {"Leeds", "LS1 4DY"}, {"Norwich", "NR2 1AW"}, {"York", "YO1 7LZ"}};

constexpr Words americanPatterns = {"* Mercantile", "* General Store", "* & Daughters, Inc.", "Old * Trading Post"};
constexpr Words americanFamilies = {"Abernathy", "Calloway",  "Delgado", "Hutchins",
                                    "Kowalski",  "Lindqvist", "Peabody", "Whitaker"};
constexpr Words americanNames = {"Amelia", "Clyde", "Dolores", "Everett", "June", "Marvin", "Opal", "Walter"};
constexpr Words americanStreets = {"# Main Street", "# Water Street", "# Old Mill Road", "# Juniper Avenue"};
constexpr Cities americanCities = {
    {"Duluth", "55802"}, {"Portland", "97204"}, {"Savannah", "31401"}, {"Taos", "87571"}};

constexpr Words danishPatterns = {"* & Søn A/S", "* Isenkram", "Brødrene *", "* Handel ApS"};
constexpr Words danishFamilies = {"Ågård", "Bjørnholt", "Dahlgård", "Fræhr", "Kjær", "Lindskov", "Nørby", "Østergaard"};
constexpr Words danishNames = {"Åse", "Bodil", "Frode", "Jørgen", "Kirsten", "Mogens", "Søren", "Tove"};
constexpr Words danishStreets = {"Søndergade #", "Havnegade #", "Kirkestræde #", "Møllevej #"};
constexpr Cities danishCities = {{"Aarhus", "8000"}, {"Helsingør", "3000"}, {"København", "1050"}, {"Tønder", "6270"}};

constexpr Words swedishPatterns = {"*s Järnhandel AB", "* & Döttrar", "Handelshuset *", "* Bosättning"};
constexpr Words swedishFamilies = {"Åkesson", "Bergström", "Ekelöf",  "Hägglund",
                                   "Lindén",  "Nyström",   "Sjöberg", "Wallén"};
constexpr Words swedishNames = {"Åsa", "Björn", "Elin", "Gösta", "Ingrid", "Lars", "Märta", "Sixten"};
constexpr Words swedishStreets = {"Storgatan #", "Ängsvägen #", "Kungsgatan #", "Skeppsbron #"};
constexpr Cities swedishCities = {{"Göteborg", "411 03"}, {"Malmö", "211 20"}, {"Umeå", "903 26"}, {"Växjö", "352 30"}};

constexpr Words spanishPatterns = {"Casa *", "Hermanos *, S.A.", "Bodegas y Menaje *", "* e Hijos"};
constexpr Words spanishFamilies = {"Álvarez", "Castaño", "Echevarría", "Ibáñez", "Muñoz", "Núñez", "Peña", "Zúñiga"};
constexpr Words spanishNames = {"Ángel", "Begoña", "Concepción", "Íñigo", "José María", "Lucía", "Ramón", "Ximena"};
constexpr Words spanishStreets = {"Calle Mayor, #", "Plaza de España, #", "Paseo del Río, #",
                                  "Avenida de la Constitución, #"};
constexpr Cities spanishCities = {{"A Coruña", "15001"}, {"Cádiz", "11005"}, {"León", "24002"}, {"Málaga", "29005"}};

constexpr Words portuguesePatterns = {"Loja do *", "* & Irmãos, Lda.", "Armazéns *", "Casa *"};
constexpr Words portugueseFamilies = {"Araújo",    "Brandão", "Conceição", "Falcão",
                                      "Guimarães", "Leitão",  "Magalhães", "Simões"};
constexpr Words portugueseNames = {"António", "Conceição", "Inês", "João", "Lídia", "Luís", "Mónica", "Zélia"};
constexpr Words portugueseStreets = {"Rua da Sé, #", "Largo do Chafariz, #", "Travessa da Fé, #", "Rua das Flores, #"};
constexpr Cities portugueseCities = {
    {"Braga", "4700-435"}, {"Évora", "7000-500"}, {"Setúbal", "2900-276"}, {"Vila do Conde", "4480-754"}};

constexpr Words swissPatterns = {"* AG", "Chez *", "* & Co. Haushaltwaren", "Boutique *"};
constexpr Words swissFamilies = {"Aeschlimann", "Bühler",  "Crétin", "Flückiger",
                                 "Gassmann",    "Häberli", "Rüegg",  "Zürcher"};
constexpr Words swissNames = {"Anaïs", "Beat", "Frédéric", "Käthi", "Reto", "Séverine", "Ueli", "Zoé"};
constexpr Words swissStreets = {"Bahnhofstrasse #", "#, rue du Rhône", "Münstergasse #", "Seeweg #"};
constexpr Cities swissCities = {{"Bern", "3011"}, {"Genève", "1204"}, {"Neuchâtel", "2000"}, {"Zürich", "8001"}};

constexpr Words canadianPatterns = {"* & Fils", "* Outfitters", "Magasin *", "* Home Supply"};
constexpr Words canadianFamilies = {"Bélanger", "Côté",      "Desrosiers", "Fraser",
                                    "Gagné",    "MacKinnon", "Pépin",      "Thériault"};
constexpr Words canadianNames = {"André", "Bronwyn", "Céline", "Ewan", "Geneviève", "Moira", "Rhéal", "Yves"};
constexpr Words canadianStreets = {"#, rue Saint-Paul", "# Wharf Road", "#, chemin du Lac", "# Maple Crescent"};
constexpr Cities canadianCities = {
    {"Halifax", "B3J 1S9"}, {"Montréal", "H2Y 1C6"}, {"Québec", "G1R 4P5"}, {"Trois-Rivières", "G9A 5H7"}};

constexpr Country countries[] = {
    {"Canada", "CA", "+1", canadianPatterns, canadianFamilies, canadianNames, canadianStreets, canadianCities},
    {"Denmark", "DK", "+45", danishPatterns, danishFamilies, danishNames, danishStreets, danishCities},
    {"France", "FR", "+33", frenchPatterns, frenchFamilies, frenchNames, frenchStreets, frenchCities},
    {"Germany", "DE", "+49", germanPatterns, germanFamilies, germanNames, germanStreets, germanCities},
    {"Portugal", "PT", "+351", portuguesePatterns, portugueseFamilies, portugueseNames, portugueseStreets,
     portugueseCities},
    {"Spain", "ES", "+34", spanishPatterns, spanishFamilies, spanishNames, spanishStreets, spanishCities},
    {"Sweden", "SE", "+46", swedishPatterns, swedishFamilies, swedishNames, swedishStreets, swedishCities},
    {"Switzerland", "CH", "+41", swissPatterns, swissFamilies, swissNames, swissStreets, swissCities},
    {"United Kingdom", "GB", "+44", britishPatterns, britishFamilies, britishNames, britishStreets, britishCities},
    {"United States", "US", "+1", americanPatterns, americanFamilies, americanNames, americanStreets, americanCities},
};

constexpr Article articles[] = {
    {"Kitchen", "Copper saucepan", "each", 6450, 1.4,
     "Hammered copper lined with tin, brass handle riveted twice. 18 cm."},
    {"Kitchen", "Cast iron casserole", "each", 8900, 4.6,
     "Enamelled inside and out; the lid bastes. Oven proof to 260 °C."},
    {"Kitchen", "Sauté pan", "each", 5275, 1.9, "Three layers, straight sides, a helper handle."},
    {"Kitchen", "Crêpe pan", "each", 2890, 1.1, "Blued steel, 24 cm. Season before first use."},
    {"Kitchen", "Bread tin", "each", 1240, 0.5, "Folded corners, no seam to rust."},
    {"Kitchen", "Pepper mill", "each", 3175, 0.4, "Turned beech with a hardened steel mechanism, guaranteed for life."},
    {"Kitchen", "Mixing bowls", "set of 3", 3650, 2.2, "Stoneware with a pouring lip; they nest."},
    {"Kitchen", "Cook's knife", "each", 7400, 0.2, "20 cm blade, forged from one piece."},
    {"Kitchen", "Chopping board", "each", 2480, 1.8, "End grain, with a groove for the juice."},
    {"Kitchen", "Colander", "each", 1995, 0.9, "Stands on three feet, drains through five hundred holes."},
    {"Table", "Dinner plates", "set of 6", 7800, 4.1, "Reactive glaze: no two are alike. 27 cm."},
    {"Table", "Soup bowls", "set of 6", 6600, 3.0, "Deep, with a broad rim."},
    {"Table", "Café au lait cups", "set of 4", 4400, 1.6, "Without handles, to warm both hands."},
    {"Table", "Water carafe", "each", 2250, 0.8, "Blown glass; the tumbler is its lid."},
    {"Table", "Linen napkins", "set of 4", 3280, 0.3, "Washed linen, hemmed by hand. 45 by 45 cm."},
    {"Table", "Table runner", "each", 2990, 0.4, "Woven stripe, 40 by 150 cm."},
    {"Table", "Salt cellar", "each", 1150, 0.2, "With a lid that swivels and a wooden spoon."},
    {"Table", "Cheese dome", "each", 3900, 1.7, "Keeps a whole Brie from the draught."},
    {"Table", "Serving platter", "each", 4150, 1.9, "Oval, 42 cm, for a fish or a roast."},
    {"Table", "Egg cups", "set of 4", 1680, 0.4, "Steady on their feet."},
    {"Garden", "Watering can", "each", 4325, 1.5, "Long reach, two roses, balanced when full. 8 litres."},
    {"Garden", "Hand trowel", "each", 1875, 0.3, "Forged, with an ash handle and a leather loop."},
    {"Garden", "Secateurs", "each", 4950, 0.3, "Every part can be replaced."},
    {"Garden", "Seed dibber", "each", 1290, 0.2, "Marked in inches and centimetres."},
    {"Garden", "Twine in a tin", "each", 1095, 0.3, "Jute, 150 m, with a cutter in the lid."},
    {"Garden", "Cloche", "each", 3525, 1.2, "A bell of glass for the first lettuce."},
    {"Garden", "Wooden trug", "each", 5600, 1.1, "Chestnut and willow, made in Sussex as ever."},
    {"Garden", "Plant labels", "box of 50", 980, 0.2, "Slate; write with a nail."},
    {"Garden", "Bird feeder", "each", 2675, 0.9, "Squirrels give up after a week."},
    {"Lighting", "Desk lamp", "each", 11900, 2.4, "Two springs and a heavy foot."},
    {"Lighting", "Hurricane lantern", "each", 4575, 1.3, "Burns twenty hours on one filling."},
    {"Lighting", "Beeswax candles", "box of 12", 2650, 0.8, "Dipped, 25 cm; they smell of honey."},
    {"Lighting", "Pendant shade", "each", 8850, 1.0, "Spun metal, white inside. Cable 2 m."},
    {"Lighting", "Candle snuffer", "each", 1450, 0.1, "Hinged, so that the wax stays where it is."},
    {"Lighting", "Wall sconce", "each", 6925, 1.2, "For one candle or one small bulb."},
    {"Lighting", "Reading light", "each", 7450, 0.9, "Clamps to a headboard or a shelf."},
    {"Textiles", "Wool blanket", "each", 12900, 1.6, "Lambswool, blanket-stitched. 130 by 190 cm."},
    {"Textiles", "Tea towels", "set of 3", 2340, 0.3, "Half linen, dries without lint."},
    {"Textiles", "Oven gloves", "pair", 1980, 0.3, "Quilted cotton, long in the cuff."},
    {"Textiles", "Apron", "each", 3890, 0.4, "Crossed at the back, one deep pocket."},
    {"Textiles", "Cushion cover", "each", 2795, 0.3, "Hidden zip, 50 by 50 cm."},
    {"Textiles", "Bath sheet", "each", 4600, 0.9, "Six hundred grams to the square metre."},
    {"Textiles", "Pillow cases", "pair", 3450, 0.4, "Percale; crisp when ironed, pleasant when not."},
    {"Textiles", "Doormat", "each", 2880, 2.1, "Coir on jute, 45 by 75 cm."},
    {"Workshop", "Claw hammer", "each", 3350, 0.9, "Hickory shaft, 16 oz head."},
    {"Workshop", "Block plane", "each", 8400, 0.7, "Low angle; sharp from the box."},
    {"Workshop", "Folding rule", "each", 1575, 0.1, "Boxwood and brass, 2 m."},
    {"Workshop", "Brace and bits", "set", 9650, 2.0, "Six auger bits in a canvas roll."},
    {"Workshop", "Oilstone", "each", 2725, 0.8, "Coarse on one face, fine on the other."},
    {"Workshop", "Tool box", "each", 6150, 3.3, "Dovetailed pine with a lift-out tray."},
    {"Workshop", "Screwdrivers", "set of 5", 4280, 0.8, "Flat blades, ground parallel."},
    {"Workshop", "Spirit level", "each", 3990, 0.6, "Rosewood, with brass end plates."},
};

constexpr Words kitchenFinishes = {"brushed", "polished", "black", "natural"};
constexpr Words tableFinishes = {"white", "blue", "sage", "ochre"};
constexpr Words gardenFinishes = {"green", "slate", "natural", "zinc"};
constexpr Words lightingFinishes = {"brass", "black", "ivory", "nickel"};
constexpr Words textileFinishes = {"natural", "indigo", "rose", "charcoal"};
constexpr Words workshopFinishes = {"oiled", "waxed", "raw", "red"};

constexpr Department departments[] = {
    {"Garden", "GA", gardenFinishes}, {"Kitchen", "KI", kitchenFinishes},  {"Lighting", "LI", lightingFinishes},
    {"Table", "TA", tableFinishes},   {"Textiles", "TX", textileFinishes}, {"Workshop", "WO", workshopFinishes},
};

constexpr Words salespeople = {"Amélie Fontaine", "Bernard Okafor", "Greta Lindqvist",
                               "Hugo Ibáñez",     "Priya Raman",    "Tom Ashby"};

constexpr Words orderRemarks = {
    "Deliver to the back door.",
    "Gift wrap, please, and leave out the invoice.",
    "Call before delivery; the lane is narrow.",
    "Repeat of the spring order, one size larger.",
    "For the shop window: best pieces only.",
    "Part delivery is fine.",
    "Hold until the customer confirms the colours.",
    "Fragile. Last time two plates came broken.",
};

constexpr Words customerNotes = {
    "Pays within the week. Likes to be told of new colours first.",
    "Second shop opens in spring; expects a larger order then.",
    "Prefers one delivery a month. Closed on Mondays and in the first half of August.",
    "Asked for the price list in French. Met at the spring fair, where she took samples of the whole linen range and "
    "of "
    "the stoneware; wants matching napkins and runners for a restaurant with forty seats.",
    "Send invoices by post.",
};

}  // namespace

std::span<const Country> Countries() { return countries; }
std::span<const Article> Articles() { return articles; }
std::span<const Department> Departments() { return departments; }
std::span<const std::string_view> Salespeople() { return salespeople; }
std::span<const std::string_view> OrderRemarks() { return orderRemarks; }
std::span<const std::string_view> CustomerNotes() { return customerNotes; }

}  // namespace quillform::sample
