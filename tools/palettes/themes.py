"""The themed palettes of Process/RGB and Process/CMYK: one table for both.

A row of a palette is one ramp of eight colours from light to dark around its own colour, the fourth, which is given in
OKLCH: lightness 0 to 1, chroma, hue in degrees; ramp() in build.py says how the others follow. Two more numbers are the
lightness of both ends, where those that follow would be wrong. A row has eight names, or one that STEPS are put before.
"""

from collections import namedtuple

Theme = namedtuple("Theme", "folder file english german french rows")

STEPS = ("Palest", "Pale", "Light", "", "Strong", "Deep", "Dark", "Darkest")

MISC = (
    Theme("Misc", "Apples", "Apples", "Äpfel", "Pommes", (
        ("Granny Smith", .80, .19, 127),
        ("Bramley", .72, .15, 121),
        ("Golden Delicious", .87, .15, 104),
        ("Cox's Orange", .70, .16, 58),
        ("Braeburn", .58, .19, 30),
        ("Red Delicious", .45, .17, 22),
    )),
    Theme("Misc", "Blues", "Blues", "Blautöne", "Bleus", (
        ("Ice, Glacier, Ice Water, Aquamarine Blue, Lagoon, Petrol, Deep Petrol, Ink Petrol", .76, .11, 212),
        ("Haze, Baby Blue, Sky Blue, Cerulean, Deep Cerulean, Steel, Prussian Blue, Midnight Prussian", .68, .14, 238),
        ("Mist Blue, Powder Blue, Cornflower, Azure, Cobalt, Royal Blue, Oxford Blue, Night Blue", .60, .19, 256),
        ("Lavender Blue, Wisteria Blue, Hyacinth, Ultramarine, Lapis, Sapphire, Navy, Blue Black", .47, .25, 266),
        ("Lilac Haze, Periwinkle, Iris, Blue Violet, Indigo, Deep Indigo, Eggplant Blue, Ink Violet", .50, .22, 282),
        ("Dove Blue, Fog Blue, Smoke Blue, Slate Blue, "
         "Denim, Air Force Blue, Gunmetal Blue, Charcoal Blue", .58, .055, 250),
    )),
    Theme("Misc", "Banana", "Bananas", "Bananen", "Bananes", (
        ("Banana Milk, Banana Cream, Banana Pudding, Ripe Banana, "
         "Golden Banana, Honey Banana, Toffee Banana, Banana Bread", .90, .15, 98, .975, .48),
        ("Green Banana", .82, .16, 118),
        ("Plantain", .68, .15, 124),
        ("Lady Finger", .86, .16, 88),
        ("Red Banana", .56, .13, 32),
        ("Banana Leaf", .58, .14, 140),
        ("Freckle", .52, .08, 65),
    )),
    Theme("Misc", "Chrstms", "Christmas", "Weihnachten", "Noël", (
        ("Candy Cane, Ribbon Pink, Holly Blush, Santa Red, "
         "Holly Berry, Poinsettia, Cranberry, Mulled Wine", .56, .23, 27),
        ("Frosted Pine, Mint Cane, Mistletoe, Fir Green, Holly Leaf, Wreath, Spruce, Forest Night", .52, .14, 148),
        ("Candlelight, Tinsel, Star Light, Gold Bauble, "
         "Old Gold, Brass Bell, Antique Gold, Frankincense", .82, .14, 88),
        ("Snowfall, Silver Bauble, Frost, Sleigh Bell, Pewter, Chimney Smoke, Coal, Soot", .72, .012, 250),
        ("Almond Paste, Eggnog, Shortbread, Gingerbread, Cinnamon Stick, Nutmeg, Yule Log, Plum Pudding", .62, .11, 60),
        ("Winter Sky, Icicle, Blue Spruce, Blue Bauble, "
         "Silent Night, Holy Night, Midnight Mass, Winter Midnight", .55, .13, 252),
    )),
    Theme("Misc", "Camoflg", "Camouflage", "Tarnfarben", "Camouflage", (
        ("Woodland Green", .48, .07, 128, .84, .22),
        ("Olive Drab", .50, .07, 110, .86, .23),
        ("Field Khaki", .68, .06, 95, .93, .32),
        ("Desert Tan", .73, .065, 78, .94, .36),
        ("Bark Brown", .42, .055, 58, .82, .18),
        ("Naval Gray", .58, .025, 245, .90, .24),
    )),
    Theme("Misc", "Greens", "Greens", "Grüntöne", "Verts", (
        ("Lime Sorbet, Lime Cream, Lime Juice, Lime Green, "
         "Pear Green, Avocado, Dark Avocado, Deep Olive", .82, .20, 124),
        ("Celery, Lettuce, Apple Green, Grass Green, Meadow, Leaf Green, Hedge, Thicket", .70, .20, 138),
        ("Honeydew, Mint Cream, Spring Mint, Emerald, "
         "Shamrock, Kelly Green, Bottle Green, Racing Green", .65, .19, 151),
        ("Sea Foam, Peppermint, Jade Light, Jade, Malachite, Viridian, Deep Viridian, Pine Needle", .66, .14, 166),
        ("Opal, Aqua Mint, Turquoise Green, Sea Green, "
         "Teal Green, Deep Teal, Lagoon Green, Abyss Green", .64, .11, 184),
        ("Lichen, Sage, Eucalyptus, Laurel, Moss, Ivy, Cypress, Black Forest", .60, .06, 140),
    )),
    Theme("Misc", "Easter", "Easter", "Ostern", "Pâques", (
        ("Egg Shell, Chick Down, Primrose, Daffodil, Yolk, Forsythia, Saffron Bun, Honey Cake", .90, .15, 97, .98, .58),
        ("Lamb's Ear, Sprout, New Grass, Easter Green, "
         "Basket Green, Clover, Meadow Shade, Box Hedge", .82, .14, 132, .97, .46),
        ("Robin's Egg, Shell Blue, Spring Sky, Easter Blue, "
         "Bluebell Light, Bluebell, Grape Hyacinth, Deep Hyacinth", .78, .10, 228, .97, .44),
        ("Lilac Mist, Crocus Light, Lilac, Crocus, "
         "Violet Petal, Pansy, Dark Pansy, Violet Shade", .74, .12, 305, .97, .40),
        ("Blossom, Bunny Nose, Cherry Petal, Easter Pink, "
         "Tulip Pink, Tulip, Deep Tulip, Dark Tulip", .80, .12, 0, .97, .45),
        ("Cream Fondant, Marzipan, Nougat, Milk Chocolate, "
         "Praline, Chocolate Egg, Dark Chocolate, Bitter Chocolate", .60, .08, 58, .95, .26),
    )),
    Theme("Misc", "Metalic", "Metallics", "Metalltöne", "Tons métalliques", (
        ("Gold Glint, Gold Leaf, Bright Gold, Gold, Old Gold, Antique Gold, Gold Shade, Gold Shadow", .80, .13, 88),
        ("Silver Glint, Silver Leaf, Bright Silver, Silver, "
         "Sterling, Tarnished Silver, Silver Shade, Silver Shadow", .77, .008, 240),
        ("Copper Glint, Copper Leaf, Bright Copper, Copper, "
         "Worn Copper, Dark Copper, Copper Shade, Copper Shadow", .64, .12, 48),
        ("Bronze Glint, Bronze Leaf, Bright Bronze, Bronze, "
         "Worn Bronze, Statue Bronze, Bronze Shade, Bronze Shadow", .60, .085, 72),
        ("Steel Glint, Brushed Steel, Bright Steel, Steel, "
         "Blued Steel, Gunmetal, Steel Shade, Steel Shadow", .62, .03, 245),
        ("Verdigris Glint, Verdigris Bloom, Bright Verdigris, Verdigris, "
         "Patina, Church Roof, Patina Shade, Patina Shadow", .66, .075, 178),
    )),
    Theme("Misc", "Hallown", "Halloween", "Halloween", "Halloween", (
        ("Candle Glow, Pumpkin Cream, Squash, Pumpkin, "
         "Jack O'Lantern, Burnt Pumpkin, Rotten Pumpkin, Pumpkin Shadow", .70, .19, 52),
        ("Ghost Violet, Potion Steam, Bat Wing Light, Witch Purple, "
         "Cauldron, Vampire Cape, Haunted Violet, Midnight Violet", .45, .19, 300),
        ("Slime Foam, Slime Light, Goblin Green, Slime, Toad, Swamp Green, Zombie, Bog Black", .78, .22, 130),
        ("Bone White, Old Bone, Moonlight, Harvest Moon, "
         "Candle Wax, Parchment Brown, Cobweb Brown, Crypt", .86, .11, 90),
        ("Ghost, Shroud, Fog, Tombstone, Raven Gray, Spider, Cat Black, Witching Hour", .60, .018, 285, .96, .16),
        ("Pale Bite, Fang Pink, Scratch, Blood, Fresh Blood, Dried Blood, Coffin Velvet, Dracula", .50, .20, 26),
    )),
    Theme("Misc", "Pastels", "Pastels", "Pastelltöne", "Pastels", (
        ("Pastel Rose", .86, .085, 8, .97, .66),
        ("Pastel Peach", .88, .080, 52, .975, .68),
        ("Pastel Lemon", .94, .090, 102, .985, .74),
        ("Pastel Mint", .90, .085, 155, .98, .70),
        ("Pastel Sky", .86, .070, 230, .97, .66),
        ("Pastel Lavender", .82, .085, 298, .965, .62),
        ("Pastel Gray", .86, .012, 270, .975, .64),
    )),
    Theme("Misc", "Midnite", "Midnight", "Mitternacht", "Minuit", (
        ("Midnight Blue", .36, .13, 265, .72, .13),
        ("Midnight Indigo", .34, .14, 285, .70, .12),
        ("Midnight Plum", .36, .12, 325, .70, .13),
        ("Midnight Teal", .40, .075, 205, .74, .15),
        ("Midnight Forest", .38, .075, 155, .72, .14),
        ("Moonlit Slate", .42, .03, 255, .86, .16),
    )),
    Theme("Misc", "Suns", "Suns", "Sonnen", "Soleils", (
        ("Dawn Mist, First Light, Sunrise Pink, Sunrise, Rising Sun, Red Dawn, Dawn Shadow, Before Dawn", .72, .17, 30),
        ("Morning White, Morning Cream, Morning Gold, Morning Sun, "
         "Breakfast Gold, Amber Morning, Morning Shade, Morning Umber", .86, .15, 84),
        ("Noon White, Noon Glare, High Sun, Noon Yellow, "
         "Midsummer, Sundial, Sundial Shade, Deep Sundial", .91, .18, 101),
        ("Late Cream, Afternoon, Low Sun, Sun Orange, Harvest Sun, Burnt Sun, Ember Sun, Sun Umber", .76, .17, 62),
        ("Evening Blush, Evening Coral, Sundown, Sunset, "
         "Sunset Red, Afterglow, Deep Afterglow, Nightfall Red", .64, .22, 28),
        ("Pale Dusk, Dusk Lilac, Dusk Mauve, Dusk Violet, "
         "Twilight, Deep Twilight, Eclipse, Total Eclipse", .54, .15, 318),
    )),
    Theme("Misc", "Reds", "Reds", "Rottöne", "Rouges", (
        ("Peach Red, Salmon Cream, Salmon, Tomato, Vermilion, Brick, Dark Brick, Kiln", .65, .21, 34),
        ("Blush Red, Coral Pink, Coral Red, Scarlet, Signal Red, Ruby Red, Oxblood, Dark Oxblood", .60, .24, 28),
        ("Shell Red, Rose Tint, Strawberry, Carmine, Crimson, Deep Crimson, Garnet, Dark Garnet", .56, .23, 20),
        ("Pink Tint, Carnation, Raspberry Pink, Raspberry, Cerise, Claret, Burgundy, Dark Burgundy", .55, .22, 8),
        ("Orchid Tint, Fuchsia Tint, Hot Pink, Ruby Pink, "
         "Magenta Red, Beetroot, Mulberry, Dark Mulberry", .58, .24, 356),
        ("Pale Clay, Rose Clay, Terracotta, Rust Red, Red Ocher, Mahogany, Redwood, Dark Mahogany", .52, .13, 32),
    )),
)

NATURE = (
    Theme("Nature", "Coralrf", "Coral Reef", "Korallenriff", "Récif corallien", (
        ("Sea Shell, Pale Coral, Coral Blossom, Coral, Red Coral, Fire Coral, Deep Coral, Coral Shadow", .70, .18, 30),
        ("Anemone Tip, Anemone, Sea Fan, Reef Pink, Sea Star, Urchin, Dark Urchin, Urchin Shadow", .62, .21, 355),
        ("Shallows, Clear Water, Tide Pool, Lagoon, Reef Water, Channel, Drop-Off, Deep Reef", .74, .12, 205),
        ("Foam Green, Sea Glass, Sea Lettuce, Parrotfish, Kelp Light, Kelp, Sea Grass, Kelp Forest", .70, .14, 165),
        ("Coral Sand, Butterfly Fish, Tang Light, Yellow Tang, "
         "Clownfish, Garibaldi, Sponge, Rusted Anchor", .85, .16, 88),
        ("Jellyfish, Sea Mist, Angelfish Light, Angelfish, "
         "Blue Tang, Indigo Hamlet, Night Dive, Sea Trench", .53, .20, 272),
    )),
    Theme("Nature", "Autumn", "Autumn", "Herbst", "Automne", (
        ("Straw Light, Wheat, Birch Leaf, Aspen Gold, Ginkgo, Larch, Old Larch, Leaf Litter", .84, .15, 90),
        ("Apricot Mist, Persimmon Cream, Sassafras, Maple Orange, "
         "Pumpkin Patch, Beech, Copper Beech, Beech Bark", .70, .17, 56),
        ("Rose Hip Pink, Sumac Blush, Virginia Creeper, Maple Red, Sumac, Red Oak, Dark Oak, Oak Shadow", .55, .19, 30),
        ("Moss Mist, Faded Fern, Bracken, Turning Leaf, Late Olive, Wet Moss, Autumn Pine, Pine Shadow", .64, .11, 116),
        ("Mushroom, Acorn Cap, Hazelnut, Acorn, Chestnut, Walnut, Wet Bark, Peat", .50, .09, 52),
        ("Heather Mist, Heather, Aster, Michaelmas Daisy, Elderberry Light, Damson, Elderberry, Sloe", .50, .12, 318),
    )),
    Theme("Nature", "Dirt", "Dirt", "Erdboden", "Terre", (
        ("Dust", .72, .045, 75),
        ("Clay Soil", .58, .09, 45),
        ("Red Earth", .48, .11, 35),
        ("Loam", .44, .055, 62),
        ("Potting Soil", .34, .035, 55, .84, .15),
        ("Gravel", .62, .014, 80),
    )),
    Theme("Nature", "Desert", "Desert", "Wüste", "Désert", (
        ("Bleached Sand, Dune Light, Dune Crest, Dune, Wind Ripple, Dune Lee, Dune Shade, Dune Night", .80, .085, 78),
        ("Pale Mesa, Mesa Pink, Canyon Wall, Red Rock, Mesa, Butte, Canyon Shade, Canyon Floor", .60, .13, 42),
        ("Cactus Bloom, Bloom Pink, Prickly Pear, Cactus Flower, "
         "Cactus Fruit, Dark Fruit, Fruit Shadow, Fruit Skin", .60, .20, 2),
        ("Sagebrush Mist, Sage Leaf, Sagebrush, Agave, Cactus, Saguaro, Creosote, Creosote Shade", .62, .065, 150),
        ("Sun Haze, Desert Marigold, Palo Verde, Desert Sun, Ocher, Dry Ocher, Camel Brown, Umber Rock", .82, .14, 85),
        ("Heat Haze, Desert Sky, Noon Sky, Turquoise Stone, "
         "Distant Range, Evening Range, Desert Dusk, Desert Night", .66, .095, 222),
    )),
    Theme("Nature", "Foliage", "Foliage", "Laub", "Feuillage", (
        ("Bud", .86, .15, 118),
        ("Beech Leaf", .72, .17, 130),
        ("Fern", .62, .15, 140),
        ("Oak Leaf", .52, .11, 128),
        ("Eucalypt", .68, .06, 165),
        ("Copper Leaf", .48, .10, 28),
    )),
    Theme("Nature", "Earthy", "Earthy", "Erdtöne", "Tons de terre", (
        ("Yellow Ocher", .72, .12, 80),
        ("Raw Sienna", .64, .11, 66),
        ("Burnt Sienna", .52, .12, 42),
        ("Venetian Red", .47, .13, 32),
        ("Raw Umber", .45, .05, 75),
        ("Green Earth", .55, .05, 135),
    )),
    Theme("Nature", "Mountin", "Mountains", "Berge", "Montagnes", (
        ("Snowfield", .80, .035, 235, .985, .45),
        ("Granite", .60, .012, 265),
        ("Alpine Meadow", .66, .15, 132),
        ("Mountain Pine", .46, .08, 155, .88, .18),
        ("Alpenglow", .70, .12, 22),
        ("Far Ridge", .58, .085, 262),
    )),
    Theme("Nature", "Jungle", "Jungle", "Dschungel", "Jungle", (
        ("Canopy Light, Sunlit Leaf, Young Palm, Palm, Banana Palm, Canopy, Deep Canopy, Jungle Floor", .68, .19, 136),
        ("Orchid White, Orchid Blush, Orchid Pink, Orchid, "
         "Wild Orchid, Passion Flower, Passion Fruit, Dark Passion", .60, .21, 335),
        ("Papaya Milk, Mango, Toucan Beak, Papaya, Hibiscus Orange, Macaw, Heliconia, Dark Heliconia", .68, .20, 42),
        ("Mist Green, Waterfall, Tree Frog, Jade Vine, Rain Pool, Rain Forest, Deep Pool, Jungle Night", .70, .13, 178),
        ("Lemon Orchid, Star Fruit, Python Gold, Jaguar, Bamboo, Dry Bamboo, Liana, Wet Liana", .82, .15, 92),
        ("Morpho Haze, Morpho Tint, Morpho Light, Morpho Blue, "
         "Hyacinth Macaw, Cassowary, Night Monkey, Panther", .52, .20, 262),
    )),
    Theme("Nature", "Rainbow", "Rainbow", "Regenbogen", "Arc-en-ciel", (
        ("Rainbow Red", .63, .25, 28),
        ("Rainbow Orange", .74, .18, 56),
        ("Rainbow Yellow", .91, .18, 100),
        ("Rainbow Green", .71, .21, 143),
        ("Rainbow Blue", .62, .19, 252),
        ("Rainbow Indigo", .46, .24, 275),
        ("Rainbow Violet", .54, .25, 305),
    )),
    Theme("Nature", "Mud", "Mud", "Schlamm", "Boue", (
        ("River Mud", .52, .04, 80),
        ("Red Mud", .50, .085, 38),
        ("Clay Slip", .66, .05, 60),
        ("Silt", .64, .025, 100),
        ("Marsh Mud", .42, .035, 115, .86, .18),
        ("Blue Clay", .58, .02, 230),
    )),
    Theme("Nature", "Sky", "Sky", "Himmel", "Ciel", (
        ("Pale Dawn, Dawn Cream, Dawn Peach, Dawn Glow, "
         "Dawn Rose, Dawn Mauve, Dawn Plum, Last Night", .83, .10, 48, .975, .34),
        ("Bright Cloud, High Haze, Morning Blue, Forenoon, "
         "Clear Sky, High Sky, Mountain Sky, Upper Air", .76, .11, 232),
        ("Noon Haze, Horizon, Noon Blue, Zenith, "
         "Deep Zenith, Flight Level, Stratosphere, Edge of Space", .62, .17, 252),
        ("Cirrus, Cloud, Overcast, Rain Cloud, Storm Cloud, Thunderhead, Storm Front, Cloudburst", .70, .025, 250),
        ("Evening Cloud, Evening Peach, Evening Orange, Sunset Glow, "
         "Burning Sky, Ember Sky, Last Light, Horizon Shadow", .68, .19, 38),
        ("First Star, Twilight Lilac, Twilight Mauve, Blue Hour, "
         "Late Dusk, Nightfall, Starry Sky, New Moon", .46, .16, 280),
    )),
    Theme("Nature", "Sand", "Sand", "Sand", "Sable", (
        ("White Beach", .88, .035, 85, .98, .50),
        ("Golden Beach", .80, .09, 82),
        ("Pink Beach", .80, .055, 28),
        ("Quarry", .70, .085, 68),
        ("Wet Sand", .58, .045, 72),
        ("Black Beach", .42, .012, 90, .86, .17),
    )),
    Theme("Nature", "Summer", "Summer", "Sommer", "Été", (
        ("Lemonade, Lemon Ice, Sunflower Light, Sunflower, Corn, Ripe Wheat, Hay, Dry Straw", .89, .17, 95),
        ("Watermelon Ice, Melon Cream, Peony, Watermelon, Poppy, Cherry, Black Cherry, Cherry Stone", .63, .22, 20),
        ("Cucumber, Melon Rind, Cut Grass, Lawn, Mint Leaf, Shade Tree, Hedgerow, Deep Shade", .74, .20, 134),
        ("Pool Light, Swimming Pool, Snorkel, Surf, Diving Pool, Deep End, Sea Swim, Night Swim", .74, .13, 215),
        ("Apricot Ice, Peach Ice, Nectarine, Apricot, Tiger Lily, Tanned, Deep Tan, Campfire", .77, .15, 58),
        ("Lavender Ice, Lavender Field, Delphinium Light, Delphinium, "
         "Larkspur, Blueberry, Summer Night, Summer Midnight", .55, .17, 282),
    )),
    Theme("Nature", "Spring", "Spring", "Frühling", "Printemps", (
        ("Snowdrop, Hazel Catkin, Cowslip, Daffodil, Dandelion, Gorse, Gorse Shade, Willow Bark", .90, .16, 100),
        ("Apple Blossom, Cherry Blossom, Peach Blossom, Tulip Pink, "
         "Camellia, Red Tulip, Peony Red, Dark Peony", .72, .16, 2),
        ("Pale Shoot, Shoot, Birch Bud, Spring Green, Young Leaf, Meadow Grass, Woodland, Wood Shadow", .78, .19, 131),
        ("April Haze, Forget-Me-Not, April Sky, Scilla, Gentian, Spring Evening, Rain Sky, Wet Slate", .66, .14, 250),
        ("Pale Lilac, Wood Violet, Lilac Flower, Wisteria, "
         "Iris Petal, Fritillary, Dark Fritillary, Hellebore", .62, .15, 306),
        ("Brook Foam, Brook Light, Dew, Meltwater, Brook, Pond, Mill Pond, Deep Pond", .76, .085, 190),
    )),
    Theme("Nature", "Water", "Water", "Wasser", "Eau", (
        ("Foam", .82, .07, 200),
        ("Lagoon", .74, .125, 205),
        ("Mountain Lake", .62, .10, 222),
        ("Open Sea", .52, .14, 248, .93, .20),
        ("Sea Green", .64, .10, 178),
        ("Rain", .64, .03, 235),
    )),
    Theme("Nature", "Trees", "Trees", "Bäume", "Arbres", (
        ("Birch", .80, .025, 90, .975, .36),
        ("Oak", .58, .11, 118),
        ("Willow", .74, .11, 124),
        ("Cherry Tree", .74, .13, 2),
        ("Fir", .44, .085, 158, .88, .17),
        ("Bark", .44, .05, 55, .86, .18),
    )),
    Theme("Nature", "Winter", "Winter", "Winter", "Hiver", (
        ("Snow", .90, .03, 240, .99, .48),
        ("Ice", .82, .065, 218),
        ("Frozen Lake", .62, .075, 235),
        ("Frosted Pine", .50, .055, 170),
        ("Bare Wood", .52, .03, 50),
        ("Winter Berry", .52, .19, 20),
    )),
)

PEOPLE = (
    Theme("People", "Eyes", "Eyes", "Augen", "Yeux", (
        ("Ice Blue Eyes", .76, .065, 232),
        ("Blue Eyes", .58, .11, 248),
        ("Gray Eyes", .62, .022, 230),
        ("Green Eyes", .62, .09, 142),
        ("Hazel Eyes", .58, .085, 88),
        ("Brown Eyes", .44, .08, 55, .84, .17),
    )),
    Theme("People", "Flesh", "Skin Tones", "Hauttöne", "Carnations", (
        ("Porcelain", .89, .045, 48, .975, .58),
        ("Rose Beige", .82, .065, 40, .96, .48),
        ("Golden Beige", .80, .075, 65, .955, .46),
        ("Olive Tan", .69, .075, 72, .90, .38),
        ("Bronze Skin", .58, .085, 55, .84, .30),
        ("Ebony Skin", .42, .06, 48, .70, .20),
    )),
    Theme("People", "Female", "Female", "Damen", "Femmes", (
        ("Powder, Powder Pink, Rose Petal, Rose, Deep Rose, Raspberry Silk, Garnet Silk, Bordeaux Silk", .70, .15, 5),
        ("Ivory Silk, Champagne, Nude, Apricot Silk, Peach Tan, Caramel Silk, Toffee Silk, Cocoa Silk", .80, .085, 58),
        ("Lilac Chiffon, Lavender Silk, Mauve, Orchid Silk, "
         "Amethyst, Plum Silk, Aubergine, Dark Aubergine", .62, .15, 312),
        ("Aqua Chiffon, Pale Turquoise, Aqua Silk, Turquoise, "
         "Peacock Light, Peacock, Teal Velvet, Dark Teal Velvet", .74, .11, 195),
        ("Coral Chiffon, Shell Coral, Coral Silk, Coral, "
         "Flame, Rouge, Carmine Velvet, Dark Carmine Velvet", .67, .19, 25),
        ("Pearl, Silver Pearl, Dove, Pearl Gray, Taupe, Graphite Silk, Soft Black, Velvet Black", .76, .012, 40),
    )),
    Theme("People", "Lipstik", "Lipstick", "Lippenstift", "Rouge à lèvres", (
        ("Nude Gloss, Nude Beige, Nude Rose, Nude, Toffee, Hazel Nude, Cocoa, Espresso", .70, .085, 40, .92, .32),
        ("Pink Gloss, Baby Pink, Candy Pink, Pink, "
         "Hot Pink, Fuchsia, Deep Fuchsia, Fuchsia Noir", .68, .20, 358, .93, .32),
        ("Peach Gloss, Peach, Coral Gloss, Coral, Tangerine, Flame, Burnt Orange, Spice", .70, .18, 34, .93, .34),
        ("Red Gloss, Rose Red, Poppy, True Red, Classic Red, Scarlet, Ruby, Ruby Noir", .58, .23, 25, .90, .28),
        ("Berry Gloss, Pale Berry, Raspberry, Berry, Cranberry, Wine, Bordeaux, Bordeaux Noir", .50, .18, 5, .88, .24),
        ("Mauve Gloss, Mauve Mist, Mauve, Orchid, Plum, Damson, Aubergine, Black Plum", .54, .12, 335, .90, .22),
    )),
    Theme("People", "Hair", "Hair", "Haare", "Cheveux", (
        ("Platinum, Ash Platinum, Champagne Blond, Light Blond, "
         "Blond, Dark Blond, Dishwater, Dark Ash Blond", .85, .07, 85, .97, .46),
        ("Flaxen, Butter Blond, Honey Light, Golden Blond, "
         "Honey, Caramel, Golden Brown, Amber Brown", .77, .11, 78, .94, .40),
        ("Strawberry Light, Strawberry Blond, Copper Blond, Ginger, "
         "Copper Red, Auburn, Dark Auburn, Mahogany", .63, .13, 48, .90, .30),
        ("Mousy, Almond, Hazel Brown, Light Brown, "
         "Chestnut Brown, Chocolate Brown, Espresso Brown, Brown Black", .52, .065, 58, .82, .20),
        ("White Hair, Silver Hair, Salt, Gray Hair, "
         "Pepper, Charcoal Hair, Soft Black, Jet Black", .70, .010, 265, .97, .17),
        ("Blue Black Shine, Raven Shine, Raven Light, Raven, "
         "Blue Black, Deep Raven, Ink, Obsidian", .38, .035, 262, .66, .12),
    )),
    Theme("People", "Male", "Male", "Herren", "Hommes", (
        ("Chambray, Oxford Shirt, Pale Denim, Denim, Indigo Denim, Raw Denim, Navy, Dark Navy", .56, .10, 255),
        ("Silver Gray, Flannel Light, Flannel, Steel Gray, "
         "Pinstripe, Charcoal, Anthracite, Dinner Jacket", .60, .012, 255),
        ("Linen, Chino, Sand Chino, Khaki, Camel, Tobacco, Cigar, Dark Cigar", .68, .075, 78),
        ("Pale Sage, Field Gray, Loden Light, Olive, Loden, Hunter, Bottle, Racing Green", .50, .07, 130),
        ("Salmon Shirt, Brick Light, Cedar, Rust, Oxblood, Cordovan, Bordeaux, Dark Bordeaux", .50, .12, 30),
        ("Parchment, Saddle Light, Saddle, Cognac, Whiskey, Walnut, Mahogany, Dark Walnut", .54, .10, 58),
    )),
    Theme("People", "Love", "Love", "Liebe", "Amour", (
        ("Love Letter, First Blush, Blush, Rose Bud, Rose, Red Rose, Passion, Deep Passion", .62, .22, 18),
        ("Kiss, Sweetheart, Candy Heart, Pink Heart, "
         "Valentine, Desire, Velvet Heart, Dark Velvet Heart", .68, .20, 358),
        ("Whisper, Lilac Letter, Violet Letter, Longing, "
         "Romance, Serenade, Velvet Night, Midnight Promise", .52, .18, 318),
        ("Lace, Satin, Peach Satin, Tenderness, Warm Heart, Flame, Ember, Smolder", .74, .14, 42),
        ("Candle, Golden Ring, Wedding Gold, Ring Gold, Honeymoon, Amber Heart, Old Flame, Keepsake", .82, .12, 85),
        ("Veil, Pearl, Silver Ring, Tear, Farewell, Heartache, Absence, Lonely Night", .66, .045, 255),
    )),
    Theme("People", "Nailpol", "Nail Polish", "Nagellack", "Vernis à ongles", (
        ("Sheer Nude, Ballet Slipper, Bare Beige, Nude, "
         "Café au Lait, Mocha, Truffle, Dark Truffle", .78, .06, 45, .95, .36),
        ("French Pink, Cotton Candy, Bubble Gum, Hot Pink, "
         "Fuchsia Pop, Magenta, Berry Pop, Dark Berry", .68, .22, 352, .95, .32),
        ("Coral Sheer, Melon, Coral, Lacquer Red, Cherry, Ruby, Oxblood, Black Cherry", .58, .23, 26, .93, .24),
        ("Lilac Sheer, Lavender, Violet Pop, Purple, Grape, Plum, Aubergine, Black Grape", .50, .21, 303, .94, .20),
        ("Mint Sheer, Mint, Aqua, Turquoise, Teal, Petrol, Deep Petrol, Midnight Petrol", .72, .12, 192, .96, .26),
        ("Champagne, Pale Gold, Gold, Rose Gold, Copper, Bronze, Antique Bronze, Black Bronze", .76, .10, 62, .95, .30),
    )),
)

THINGS = (
    Theme("Things", "Candy", "Candy", "Süßigkeiten", "Bonbons", (
        ("Marshmallow, Cotton Candy, Pink Taffy, Bubble Gum, "
         "Raspberry Drop, Cherry Drop, Cherry Jelly, Cherry Cola", .70, .20, 0),
        ("Lemon Sherbet, Lemon Drop, Pineapple Cube, Lemon Chew, "
         "Butterscotch, Toffee, Caramel, Burnt Sugar", .90, .17, 98),
        ("Peach Ring, Orange Cream, Orange Slice, Orange Drop, "
         "Mandarin Jelly, Blood Orange, Cinnamon Drop, Molasses", .74, .18, 54),
        ("Mint Cream, Mint Stick, Peppermint, Spearmint, "
         "Lime Jelly, Sour Apple, Eucalyptus Drop, Pine Drop", .78, .18, 145),
        ("Sugar Ice, Blue Taffy, Blue Sherbet, Blue Raspberry, "
         "Blueberry Chew, Blueberry Jelly, Dark Blueberry, Sloe Drop", .68, .15, 240),
        ("Violet Cream, Parma Violet, Lilac Chew, Grape Drop, "
         "Grape Jelly, Blackcurrant, Licorice Plum, Licorice", .56, .20, 306),
    )),
    Theme("Things", "Fire", "Fire", "Feuer", "Feu", (
        ("White Heat, Flash, Bright Flame, Yellow Flame, Candle Flame, Torch, Scorched Gold, Singed", .91, .17, 98),
        ("Glow, Spark, Amber Flame, Orange Flame, Blaze, Hot Iron, Cooling Iron, Scale", .74, .18, 58),
        ("Rose Heat, Heat Shimmer, Red Glow, Red Flame, Fire Red, Ember, Dying Ember, Banked Fire", .62, .24, 30),
        ("Pale Cinder, Hearth Light, Hearth, Brick Oven, Burnt Clay, Fire Brick, Sooted Brick, Chimney", .50, .14, 36),
        ("Gas Haze, Pilot Light, Gas Flame, Blue Flame, Burner, Deep Burner, Alcohol Flame, Flame Root", .60, .18, 258),
        ("White Ash, Ash, Wood Ash, Smoke, Dark Smoke, Cinder, Charcoal, Soot", .70, .014, 60, .95, .17),
    )),
    Theme("Things", "Crayon", "Crayons", "Wachsmalstifte", "Crayons de cire", (
        ("Crayon Red", .60, .23, 27),
        ("Crayon Orange", .73, .18, 54),
        ("Crayon Yellow", .90, .18, 99),
        ("Crayon Green", .64, .18, 145),
        ("Crayon Blue", .55, .19, 256),
        ("Crayon Violet", .51, .20, 300),
        ("Crayon Brown", .50, .10, 52),
    )),
    Theme("Things", "Peaches", "Peaches", "Pfirsiche", "Pêches", (
        ("White Peach", .91, .055, 62, .98, .62),
        ("Yellow Peach", .86, .115, 78, .975, .52),
        ("Peach", .80, .115, 52, .97, .44),
        ("Nectarine", .66, .18, 34, .94, .34),
        ("Peach Blossom", .77, .13, 5, .97, .40),
        ("Peach Leaf", .62, .12, 130, .94, .28),
    )),
    Theme("Things", "Neon", "Neon", "Neon", "Néon", (
        ("Neon Pink", .66, .30, 352, .92, .38),
        ("Neon Orange", .72, .21, 46, .93, .42),
        ("Neon Yellow", .96, .22, 109, .985, .56),
        ("Neon Green", .86, .29, 142, .97, .46),
        ("Neon Cyan", .88, .16, 198, .97, .46),
        ("Neon Blue", .56, .27, 263, .88, .30),
        ("Neon Violet", .58, .30, 305, .90, .30),
    )),
    Theme("Things", "Penink", "Pen Inks", "Tinten", "Encres", (
        ("Royal Blue Ink", .48, .20, 266, .92, .20),
        ("Blue Black Ink", .38, .07, 250, .86, .14),
        ("Turquoise Ink", .68, .12, 215),
        ("Green Ink", .52, .13, 152),
        ("Red Ink", .56, .22, 25),
        ("Violet Ink", .44, .19, 300, .92, .18),
        ("Sepia Ink", .40, .06, 55, .86, .16),
    )),
    Theme("Things", "Pencils", "Colored Pencils", "Buntstifte", "Crayons de couleur", (
        ("Cream, Naples Yellow, Lemon Yellow, Cadmium Yellow, "
         "Golden Ocher, Raw Sienna, Raw Umber, Van Dyke Brown", .87, .16, 92),
        ("Flesh, Light Peach, Salmon, Orange, Vermilion, Burnt Sienna, Sanguine, Burnt Umber", .71, .18, 48),
        ("Pink, Rose Pink, Geranium, Scarlet Lake, "
         "Crimson Lake, Madder Carmine, Burgundy, Dark Burgundy", .58, .22, 22),
        ("Lilac, Pale Violet, Mauve, Purple, Imperial Purple, Blue Violet, Dark Violet, Indigo Violet", .50, .19, 308),
        ("Ice Blue, Sky Blue, Light Blue, Cobalt Blue, Ultramarine, Prussian Blue, Indigo, Dark Indigo", .55, .17, 255),
        ("Pale Mint, May Green, Grass Green, Emerald Green, "
         "Cedar Green, Juniper, Bottle Green, Dark Green", .64, .16, 145),
        ("White, Silver Gray, Cold Gray, Medium Gray, "
         "Slate Gray, Gunmetal, Graphite, Ivory Black", .68, .012, 250, .985, .20),
    )),
    Theme("Things", "Tiger", "Tiger", "Tiger", "Tigre", (
        ("Belly White, Whisker, Cream Fur, Sand Fur, Tawny, Dusty Fur, Fur Shade, Fur Shadow", .86, .06, 78, .98, .40),
        ("Pale Amber, Amber Fur, Gold Fur, Tiger Gold, Tiger Amber, Old Amber, Rust Fur, Rust Shade", .78, .15, 72),
        ("Pale Orange, Peach Fur, Bright Orange, Tiger Orange, "
         "Flame Fur, Burnt Fur, Umber Fur, Umber Shade", .68, .17, 52),
        ("Tiger Eye Light, Tiger Eye Yellow, Tiger Eye, Iris Green, "
         "Iris Olive, Deep Iris, Dark Iris, Pupil", .76, .13, 105),
        ("Nose Pink, Tongue Pink, Nose, Tongue, Paw Pad, Dark Pad, Pad Shade, Pad Shadow", .68, .11, 18),
        ("Stripe Edge, Worn Stripe, Brown Stripe, Stripe, "
         "Dark Stripe, Deep Stripe, Black Stripe, Night Stripe", .34, .025, 55, .66, .12),
    )),
    Theme("Things", "Roses", "Roses", "Rosen", "Roses", (
        ("White Rose, Ivory Rose, Cream Rose, Yellow Rose, "
         "Gold Rose, Amber Rose, Dried Gold Rose, Old Parchment Rose", .89, .13, 94, .985, .50),
        ("Champagne Rose, Peach Rose, Apricot Rose, Orange Rose, "
         "Tangerine Rose, Copper Rose, Rust Rose, Bronze Rose", .75, .15, 52),
        ("Blush Rose, Shell Rose, Pink Rose, Rose Pink, "
         "Deep Pink Rose, Cerise Rose, Damask Rose, Dark Damask", .73, .16, 358),
        ("Coral Rose, Salmon Rose, Scarlet Rose, Red Rose, "
         "Velvet Rose, Crimson Rose, Oxblood Rose, Black Rose", .55, .23, 24),
        ("Lavender Rose, Lilac Rose, Mauve Rose, Violet Rose, "
         "Plum Rose, Purple Rose, Aubergine Rose, Midnight Rose", .60, .14, 328),
        ("Dew, Sepal, New Leaf, Rose Leaf, Stem, Thorn Green, Leaf Shade, Hedge Shade", .56, .11, 142),
    )),
    Theme("Things", "Woodflr", "Wood Floors", "Holzböden", "Parquets", (
        ("Maple Floor", .82, .06, 78, .96, .46),
        ("Oak Floor", .70, .085, 72, .92, .36),
        ("Bamboo Floor", .78, .09, 84, .95, .42),
        ("Cherry Floor", .56, .105, 46, .86, .26),
        ("Walnut Floor", .44, .06, 55, .80, .18),
        ("Gray Oak Floor", .66, .018, 75, .93, .30),
    )),
    Theme("Things", "Wood", "Wood", "Holz", "Bois", (
        ("Ash Wood", .84, .045, 82, .97, .48),
        ("Pine Wood", .80, .09, 76, .96, .44),
        ("Beech Wood", .72, .085, 58, .94, .36),
        ("Teak", .60, .095, 65, .88, .28),
        ("Mahogany", .46, .11, 38, .82, .20),
        ("Rosewood", .38, .075, 25, .76, .15),
        ("Ebony", .34, .018, 60, .74, .12),
    )),
)

THEMES = MISC + NATURE + PEOPLE + THINGS
