#include "zelclr/palettes/fixed_palettes.h"

#include "zelclr/colour/palette_types.h"

#include <algorithm>
#include <array>

namespace ZelClr {

using ZelUtils::Guid;
using namespace ZelUtils::literals;

namespace {

struct TypedPalette
{
  std::uint16_t type;
  std::string_view path;
};

// Their identifiers stand in palette_types.cpp. tools/palettes/build.py reads both tables below.
constexpr std::array<TypedPalette, 32> kTypedPalettes = {{
  {7, "Process/rgbstd.xml"},
  {1, "Process/trumatch.xml"},
  {40, "Process/SVGColor.xml"},
  {33, "Process/PANTONE/Previous Version/panhexac.xml"},
  {38, "Process/PANTONE/Previous Version/paneuroc.xml"},
  {12, "Process/PANTONE/Previous Version/panhexc.xml"},
  {34, "Process/PANTONE/Previous Version/panhexau.xml"},
  {39, "Process/PANTONE/Previous Version/pans2pec.xml"},
  {24, "Process/PANTONE/Previous Version/panhexu.xml"},
  {2, "Process/PANTONE/Previous Version/pantone.xml"},
  {25, "Process/RGB/WebSafe.xml"},
  {9, "Spot/dupont.xml"},
  {11, "Spot/dic.xml"},
  {10, "Spot/toyo.xml"},
  {8, "Spot/focolton.xml"},
  {29, "Spot/HKS/HKS_E.xml"},
  {23, "Spot/HKS/hks.xml"},
  {27, "Spot/HKS/HKS_N.xml"},
  {26, "Spot/HKS/HKS_K.xml"},
  {28, "Spot/HKS/HKS_Z.xml"},
  {18, "Spot/PANTONE/Previous Version/panguidu.xml"},
  {17, "Spot/PANTONE/Previous Version/panguidc.xml"},
  {20, "Spot/PANTONE/Previous Version/panmetlu.xml"},
  {30, "Spot/PANTONE/Previous Version/panmetlc.xml"},
  {21, "Spot/PANTONE/Previous Version/panpastc.xml"},
  {31, "Spot/PANTONE/Previous Version/panpasc.xml"},
  {32, "Spot/PANTONE/Previous Version/panpasu.xml"},
  {22, "Spot/PANTONE/Previous Version/panpastu.xml"},
  {36, "Spot/PANTONE/Previous Version/pantonec.xml"},
  {3, "Spot/PANTONE/Previous Version/pantone8.xml"},
  {37, "Spot/PANTONE/Previous Version/pantoneu.xml"},
  {35, "Spot/PANTONE/Previous Version/pantonem.xml"},
}};

constexpr std::array<FixedPalette, 141> kOtherPalettes = {{
  {"{280EEAB2-2AA5-48F0-BF7F-9EC8B197FEF6}"_guid, "Gray100.xml"},
  {"{10F1E00C-C047-4554-988E-C59EEDDC46BA}"_guid, "dynamic.xml"},
  {"{77B1B02D-FB04-4C60-B031-264D9EF38AC9}"_guid, "Process/UniversalLaserSystems.xml"},
  {"{39C007B4-5928-4DE2-A82D-9C35F1565B1A}"_guid, "Process/CMYK/Misc/cApples.xml"},
  {"{264CABE0-1DE6-4D7D-A042-DA9512388654}"_guid, "Process/CMYK/Misc/cBlues.xml"},
  {"{C8555A3D-797B-4683-97D4-A63CE469DF44}"_guid, "Process/CMYK/Misc/cBanana.xml"},
  {"{346BCB7F-4CCF-409E-A8FB-C7392E91F55B}"_guid, "Process/CMYK/Misc/cChrstms.xml"},
  {"{29BA0371-9389-40D0-AFAA-6FFA101CCAD7}"_guid, "Process/CMYK/Misc/cCamoflg.xml"},
  {"{F8076F2C-FD27-42DF-B4A1-922A71DE9CE2}"_guid, "Process/CMYK/Misc/cGreens.xml"},
  {"{6B43178A-F07A-4854-8FD4-83E6944FF11B}"_guid, "Process/CMYK/Misc/cEaster.xml"},
  {"{5E29A185-0D22-4018-9D5E-951CA5D7F301}"_guid, "Process/CMYK/Misc/cMetalic.xml"},
  {"{DCAB87AF-F23D-49DA-B26C-1FF518FB6E23}"_guid, "Process/CMYK/Misc/cHallown.xml"},
  {"{2B064225-9881-4BCB-80B1-2A1B5AA7D675}"_guid, "Process/CMYK/Misc/cPastels.xml"},
  {"{89B9AA66-AC59-4105-A335-5A419553E5FB}"_guid, "Process/CMYK/Misc/cMidnite.xml"},
  {"{E90C7548-9D7B-414F-B1D5-603A44A794DA}"_guid, "Process/CMYK/Misc/cSuns.xml"},
  {"{C49399E3-8DF2-4FA6-905E-6AA06FAB4887}"_guid, "Process/CMYK/Misc/cReds.xml"},
  {"{230A6656-2F76-4535-A741-C6144DE3FEF9}"_guid, "Process/CMYK/Nature/cCoralrf.xml"},
  {"{93B4FAB3-E3F8-4844-8053-8EBCFE12D3B4}"_guid, "Process/CMYK/Nature/cAutumn.xml"},
  {"{AB3A3EF2-1618-4B28-96A0-129F823749A5}"_guid, "Process/CMYK/Nature/cDirt.xml"},
  {"{FE3FCC51-6FBC-43DD-9E04-C3141DFBFE03}"_guid, "Process/CMYK/Nature/cDesert.xml"},
  {"{0AACFD87-B39A-4943-A61F-263A43075E9C}"_guid, "Process/CMYK/Nature/cFoliage.xml"},
  {"{4D04E7E4-4FB8-46ED-B951-D76F9B995D57}"_guid, "Process/CMYK/Nature/cEarthy.xml"},
  {"{B60FBC75-6ACD-490F-AB39-34B7339EE3CE}"_guid, "Process/CMYK/Nature/cMountin.xml"},
  {"{62B59B40-56E8-455C-8895-8828AAD0C1FA}"_guid, "Process/CMYK/Nature/cJungle.xml"},
  {"{3FB44D6E-8E75-4142-BEB9-1B683A63D711}"_guid, "Process/CMYK/Nature/cRainbow.xml"},
  {"{6508FB53-CA9C-4692-864A-617E652EB74F}"_guid, "Process/CMYK/Nature/cMud.xml"},
  {"{F4178348-0C8E-4D28-8B35-45DA39114C7E}"_guid, "Process/CMYK/Nature/cSky.xml"},
  {"{3C6CE1F1-69D2-4525-BE69-04BD21208D48}"_guid, "Process/CMYK/Nature/cSand.xml"},
  {"{29F31F30-753A-4F93-9A51-17488277FE57}"_guid, "Process/CMYK/Nature/cSummer.xml"},
  {"{8B597613-A42F-4ECF-B10D-153F39C1D8FB}"_guid, "Process/CMYK/Nature/cSpring.xml"},
  {"{ACA7C60B-4329-465D-8DA7-068D4E6E2335}"_guid, "Process/CMYK/Nature/cWater.xml"},
  {"{36233B09-693C-4EC4-8BE7-A12F8C1BB6E2}"_guid, "Process/CMYK/Nature/cTrees.xml"},
  {"{ACB5939E-4C01-408A-B52F-E8F98D809541}"_guid, "Process/CMYK/Nature/cWinter.xml"},
  {"{BF6A1167-B24B-444B-B66A-59287DABF548}"_guid, "Process/CMYK/People/cEyes.xml"},
  {"{1D8B00E6-2809-4B7C-B106-A6CF08517454}"_guid, "Process/CMYK/People/cFlesh.xml"},
  {"{0CA8AD1D-E77B-40C1-80E5-A280C8C2FC2F}"_guid, "Process/CMYK/People/cFemale.xml"},
  {"{013A73B0-004C-4B55-A99F-BE4B867A397C}"_guid, "Process/CMYK/People/cLipstik.xml"},
  {"{EE2EBBA3-F8AC-4B17-8A0F-A383E8ADA67D}"_guid, "Process/CMYK/People/cHair.xml"},
  {"{23B6682E-6DE7-4030-9EE7-D75C27581DA7}"_guid, "Process/CMYK/People/cMale.xml"},
  {"{A3BAB606-5A78-4634-ACCB-43D2FDF5E198}"_guid, "Process/CMYK/People/cLove.xml"},
  {"{F017E642-56C1-49B5-A911-C6B01C5E3B55}"_guid, "Process/CMYK/People/cNailpol.xml"},
  {"{65D7DCEE-8C64-4CA1-9742-5668714B3878}"_guid, "Process/CMYK/Things/cCandy.xml"},
  {"{C99D3173-8250-4136-897C-B92D801141BE}"_guid, "Process/CMYK/Things/cFire.xml"},
  {"{D1D21DD0-93E2-47FE-BE17-E895BB95BEB1}"_guid, "Process/CMYK/Things/cCrayon.xml"},
  {"{8208E993-6FCE-4598-BE9B-15E127660A3D}"_guid, "Process/CMYK/Things/cPeaches.xml"},
  {"{94F7F328-D41C-4E8D-9859-E7A8FA16AD1B}"_guid, "Process/CMYK/Things/cNeon.xml"},
  {"{37BA4DA2-6CCA-4672-A4B2-5ECA60F3D7F4}"_guid, "Process/CMYK/Things/cPenink.xml"},
  {"{949161F5-E56B-4FD6-8767-CD5A4CD86BF7}"_guid, "Process/CMYK/Things/cPencils.xml"},
  {"{E2A8874E-5A44-4204-9D0B-E772FA67FF0C}"_guid, "Process/CMYK/Things/cTiger.xml"},
  {"{E3A845A7-C6A2-4E71-8511-5B12F05F80EB}"_guid, "Process/CMYK/Things/cRoses.xml"},
  {"{AB133831-ACA0-4BC2-B7C0-45EC98213F03}"_guid, "Process/CMYK/Things/cWoodflr.xml"},
  {"{256F63BD-EF49-42E9-8170-80478FDF8579}"_guid, "Process/CMYK/Things/cWood.xml"},
  {"{8EEEF5D3-5587-4D2F-9C75-2D324987FA85}"_guid, "Process/PANTONE/PANTONE+/PantonePlusCMYKUncoated.xml"},
  {"{F2F0C7AA-8795-402D-BBCB-FE368E384DF8}"_guid, "Process/PANTONE/PANTONE+/PantonePlusCMYKCoated.xml"},
  {"{35E3A818-D897-45D3-8F1E-525FAC7ED8FC}"_guid, "Process/PANTONE/PANTONE+/PantonePlusColorBridgeUncoated.xml"},
  {"{3AC26B30-CC98-4097-B1DC-E8C1616C7856}"_guid, "Process/PANTONE/PANTONE+/PantonePlusColorBridgeCoated.xml"},
  {"{CE31A0F9-3962-4260-BBD3-BE31A43B4385}"_guid, "Process/PANTONE/Previous Version/PantoneColorBridgeCoated.xml"},
  {"{311073ED-BBA0-4444-A1B5-2630D772BFC6}"_guid, "Process/PANTONE/Previous Version/PantoneColorBridgeUncoated.xml"},
  {"{528DF2CC-686A-4768-A053-4C447EB54DC3}"_guid, "Process/PANTONE/Previous Version/PantoneColorBridgeEuro.xml"},
  {"{447643A3-D182-48B8-BA74-70CD15FAD845}"_guid, "Process/PANTONE/Previous Version/PantoneGoeBridgeCoated.xml"},
  {"{5B1E1488-13C6-4674-87AC-4390BB357365}"_guid, "Process/RGB/256 Colors/system.xml"},
  {"{14354A65-343B-4DDF-873B-09706A658987}"_guid, "Process/RGB/256 Colors/gray.xml"},
  {"{37E7219E-9C09-4B8F-8800-0BA64CA6F52C}"_guid, "Process/RGB/256 Colors/vga.xml"},
  {"{BE86F3A9-40C3-4075-A64B-E9D4CA4D9F1A}"_guid, "Process/RGB/256 Colors/Uniform.xml"},
  {"{91A1455B-0D5D-4040-B2E4-8A9B44090B3A}"_guid, "Process/RGB/Misc/rApples.xml"},
  {"{711ACFF1-0E57-493B-801C-2E64A09E2DBF}"_guid, "Process/RGB/Misc/rBlues.xml"},
  {"{DB7DCFA6-26D0-42A3-B428-FBE2994CAEDE}"_guid, "Process/RGB/Misc/rBanana.xml"},
  {"{190F939B-0A2E-49D8-A067-99E170FC09F0}"_guid, "Process/RGB/Misc/rChrstms.xml"},
  {"{32412DB3-B354-413E-87E6-E58DA3BE44A5}"_guid, "Process/RGB/Misc/rCamoflg.xml"},
  {"{C30BACCE-C07D-4962-BF06-8993651864F2}"_guid, "Process/RGB/Misc/rGreens.xml"},
  {"{B18C262D-5DE2-4654-9E06-81C247CE11E2}"_guid, "Process/RGB/Misc/rEaster.xml"},
  {"{D5F3B4BC-59E4-4371-878C-7C170E3ECCCA}"_guid, "Process/RGB/Misc/rMetalic.xml"},
  {"{A3EB84A5-37D9-4929-B015-0B92671E32C7}"_guid, "Process/RGB/Misc/rHallown.xml"},
  {"{C3790207-627C-4A71-B6C8-5C12F96EB6DD}"_guid, "Process/RGB/Misc/rPastels.xml"},
  {"{F4951DCF-59C0-49BA-A335-06ADD703B0C8}"_guid, "Process/RGB/Misc/rMidnite.xml"},
  {"{CD258803-A61F-4B06-9379-C9878B1C9164}"_guid, "Process/RGB/Misc/rSuns.xml"},
  {"{D3ACFB2D-D145-4D94-B07E-8623BF0D97C7}"_guid, "Process/RGB/Misc/rReds.xml"},
  {"{FBCE4D86-C613-414C-BEE9-EBEB7EED5302}"_guid, "Process/RGB/Misc/blkbody.xml"},
  {"{2C69130A-645D-40C3-83EC-FCE7B9623E80}"_guid, "Process/RGB/Nature/rCoralrf.xml"},
  {"{68569115-51F0-428D-B492-DFCD68C0C985}"_guid, "Process/RGB/Nature/rAutumn.xml"},
  {"{4A4DEE00-5A89-4F42-9CC9-5B009BD13EFE}"_guid, "Process/RGB/Nature/rDirt.xml"},
  {"{DC7D5056-8DC3-4E55-8E53-BD3C6A2D7CFF}"_guid, "Process/RGB/Nature/rDesert.xml"},
  {"{7BF95C3C-74A5-4E81-95BE-DEABBB7AF574}"_guid, "Process/RGB/Nature/rFoliage.xml"},
  {"{B14EA477-115F-4546-BDA5-0FC973487A46}"_guid, "Process/RGB/Nature/rEarthy.xml"},
  {"{237C02D3-EB64-422D-B9E4-19C355DB3DA7}"_guid, "Process/RGB/Nature/rMountin.xml"},
  {"{A797124D-EFBD-42DA-8007-2CAA4FFACE69}"_guid, "Process/RGB/Nature/rJungle.xml"},
  {"{E8727189-513E-4C3A-B1AB-023AA7E17CAF}"_guid, "Process/RGB/Nature/rRainbow.xml"},
  {"{3BD22E44-BFE6-4E17-96E8-617021F8DEEE}"_guid, "Process/RGB/Nature/rMud.xml"},
  {"{5EAF262E-4D1F-4D6B-8C28-9EC4A2607DA7}"_guid, "Process/RGB/Nature/rSky.xml"},
  {"{2DC19569-F05F-4ABF-9172-50E8A56C12B5}"_guid, "Process/RGB/Nature/rSand.xml"},
  {"{5164F048-D0FF-444D-BB7A-883CC51D4DA9}"_guid, "Process/RGB/Nature/rSummer.xml"},
  {"{83D8BB67-00C9-4D96-A851-D29A73EEBF07}"_guid, "Process/RGB/Nature/rSpring.xml"},
  {"{45AAFB41-8F10-4CAC-8660-7D79D9C3497B}"_guid, "Process/RGB/Nature/rWater.xml"},
  {"{75AACAD7-EFFD-496F-9C14-26BCCA645619}"_guid, "Process/RGB/Nature/rTrees.xml"},
  {"{233413D1-A2BE-4A98-9828-0ACF4AC2C52D}"_guid, "Process/RGB/Nature/rWinter.xml"},
  {"{85CAE065-3FB5-40CD-A9FE-10687234F32A}"_guid, "Process/RGB/People/rEyes.xml"},
  {"{BB7FF7FC-3234-4D63-B31F-A1438F1A5DE5}"_guid, "Process/RGB/People/rFlesh.xml"},
  {"{C7D5EDD0-58F0-4CF5-9044-F2AEF201FAD4}"_guid, "Process/RGB/People/rFemale.xml"},
  {"{01DC694D-4225-4B14-B5A6-3EE0952D09CA}"_guid, "Process/RGB/People/rLipstik.xml"},
  {"{8D3CCECB-8D3F-4A2E-A362-1F93DA3A04F8}"_guid, "Process/RGB/People/rHair.xml"},
  {"{B46E7141-E6AC-4C1A-83D0-B1FDA8107D6D}"_guid, "Process/RGB/People/rMale.xml"},
  {"{E574225C-0D09-4DC0-9331-2A629DDE0D3B}"_guid, "Process/RGB/People/rLove.xml"},
  {"{77120044-0B16-4CAA-9614-56B7AC68DEE0}"_guid, "Process/RGB/People/rNailpol.xml"},
  {"{E67909BC-4E32-42AF-B785-DD2F56EB727F}"_guid, "Process/RGB/Things/rCandy.xml"},
  {"{A8F0AB7A-AC53-4A46-BB47-BEC3DFA6C355}"_guid, "Process/RGB/Things/rFire.xml"},
  {"{2FFE10E2-886D-4ACC-850D-8C1ECDEA6D84}"_guid, "Process/RGB/Things/rCrayon.xml"},
  {"{917425B2-099C-4BE2-AE3B-FCCE40A8F460}"_guid, "Process/RGB/Things/rPeaches.xml"},
  {"{A2E90C52-20F8-4228-A455-3B931FBF708C}"_guid, "Process/RGB/Things/rNeon.xml"},
  {"{E0EB41E1-D3DA-4535-B234-AA37BFED28B5}"_guid, "Process/RGB/Things/rPenink.xml"},
  {"{EADB83F4-E9B7-496D-B08B-94B0EB95497E}"_guid, "Process/RGB/Things/rPencils.xml"},
  {"{3D82EB8C-C261-40C5-9DF2-9720519EB4E5}"_guid, "Process/RGB/Things/rTiger.xml"},
  {"{42B673B3-6143-45EB-9D06-2A33B92150DC}"_guid, "Process/RGB/Things/rRoses.xml"},
  {"{768B0223-5CFB-4FC3-8163-2D76663C630A}"_guid, "Process/RGB/Things/rWoodflr.xml"},
  {"{B78FB1D9-E0E5-4FF3-B10F-1E4A94BA0128}"_guid, "Process/RGB/Things/rWood.xml"},
  {"{A7262924-234A-42A7-9B3B-B5535F86B0AC}"_guid, "Spot/ONYX Graphics/Colex_Cutting.xml"},
  {"{650C38E1-D1BA-4B08-8E88-E6A0A075E088}"_guid, "Spot/ONYX Graphics/HP_Cutting.xml"},
  {"{20B6C4D0-0BB9-4635-9999-E7D127E8B1D9}"_guid, "Spot/ONYX Graphics/Graphtec_Cutting.xml"},
  {"{F5C28E3F-2595-466A-89A5-05E0BE46DECC}"_guid, "Spot/ONYX Graphics/ONYX_Default_Cutting.xml"},
  {"{2052D2E9-A463-4FF9-8E13-D5BB99FC020E}"_guid, "Spot/ONYX Graphics/Summa_Cutting.xml"},
  {"{6FC728D8-0973-4F56-996A-408560BBAEE5}"_guid, "Spot/ONYX Graphics/OnyxClrRefLib.xml"},
  {"{C9E0BA36-ADF2-47CD-861B-A86751AAC925}"_guid, "Spot/Roland/Roland Color System Library.xml"},
  {"{9C274CE4-37D3-479A-B09C-7F8BF1AB61F9}"_guid, "Spot/Roland/Roland VersaWorks.xml"},
  {"{D1633DD2-E622-4F94-A0D9-501925CFAC7C}"_guid, "Spot/Roland/Roland Metallic Color System Library.xml"},
  {"{A5B6E0D9-912D-499D-981E-7A05D2A3D8EE}"_guid, "Spot/PANTONE/PantoneFashionHomeCottonNewColors.xml"},
  {"{9AF586C6-722B-4FA4-9B20-7EF673D5614B}"_guid, "Spot/PANTONE/PantoneFashionHomeCotton.xml"},
  {"{130615F3-4717-45C3-ABD5-EB893181E073}"_guid, "Spot/PANTONE/PantoneFashionHomePaper.xml"},
  {"{BCB37301-EC5E-4D5B-A939-09562590497E}"_guid, "Spot/PANTONE/PantoneFashionHomeNylonBrights.xml"},
  {"{25392EB0-CBAF-4CC9-973B-E63ECB9962E3}"_guid, "Spot/PANTONE/PantoneFHICottonTCX.xml"},
  {"{E4E40A57-A34E-4C73-8846-0657393A840B}"_guid, "Spot/PANTONE/PantoneFashionHomePaperNewColors.xml"},
  {"{324EE0BD-7837-4379-A59D-9D9AF612C054}"_guid, "Spot/PANTONE/PantoneFHIMetallicShimmersTPM.xml"},
  {"{BB43C01C-9333-490A-B11B-8EC4AC2FE93D}"_guid, "Spot/PANTONE/PantoneFHICottonTCX2801.xml"},
  {"{071D98A3-AEA7-46C7-AC4D-4D2DED6E96AB}"_guid, "Spot/PANTONE/PantoneFHITPGPaper.xml"},
  {"{288496E0-BE15-4929-9CEE-FAF70BE88FD3}"_guid, "Spot/PANTONE/PantoneFHIPolyesterTSX.xml"},
  {"{12C4C4F6-818A-41F1-8C8F-0FCE9A89D3CB}"_guid, "Spot/PANTONE/PantoneGoeUncoated.xml"},
  {"{14D658F7-6E1D-4A6E-828A-40333165D5EB}"_guid, "Spot/PANTONE/PantoneGoeCoated.xml"},
  {"{89095202-73B8-40E2-A34E-483F70ECCCC1}"_guid, "Spot/PANTONE/PANTONE+/PantonePlusMetallicCoated.xml"},
  {"{C03EBAFD-AC55-4B59-8423-D4AEB14E3A0E}"_guid, "Spot/PANTONE/PANTONE+/PantonePlusExtendedGamutCoated.xml"},
  {"{493E951E-2E01-493D-8CB0-EFA84542B063}"_guid, "Spot/PANTONE/PANTONE+/PantonePlusPastelNeonUncoated.xml"},
  {"{69F25D62-F3C5-42D5-B62A-FC89B949F445}"_guid, "Spot/PANTONE/PANTONE+/PantonePlusPastelNeonCoated.xml"},
  {"{D5070566-B278-43AD-8735-0C6BEBD312DC}"_guid, "Spot/PANTONE/PANTONE+/PantonePlusSolidUncoated.xml"},
  {"{DD1222A8-9B8E-4122-AC7B-CC3D4C2F182C}"_guid, "Spot/PANTONE/PANTONE+/PantonePlusSolidCoated.xml"},
}};

constexpr std::size_t kCount = kTypedPalettes.size() + kOtherPalettes.size();
static_assert(kCount == 173);

/// By identifier.
using Table = std::array<FixedPalette, kCount>;

Table MakeTable()
{
  Table table;
  const auto typed = std::transform(kTypedPalettes.begin(), kTypedPalettes.end(), table.begin(), [](const auto &row) {
    return FixedPalette{PaletteIdentifierFromType(row.type), row.path};
  });
  std::copy(kOtherPalettes.begin(), kOtherPalettes.end(), typed);
  std::sort(table.begin(), table.end(), [](const auto &a, const auto &b) { return a.identifier < b.identifier; });
  return table;
}

constexpr char Folded(char c)
{
  if (c == '\\')
    return '/';
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SamePath(std::string_view a, std::string_view b)
{
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return Folded(x) == Folded(y); });
}

} // namespace

std::span<const FixedPalette> FixedPalettes()
{
  static const Table table = MakeTable();
  return table;
}

const FixedPalette *FindFixedPalette(const Guid &identifier)
{
  const auto table = FixedPalettes();
  const auto row =
    std::lower_bound(table.begin(), table.end(), identifier,
                     [](const auto &palette, const Guid &wanted) { return palette.identifier < wanted; });
  return row != table.end() && row->identifier == identifier ? &*row : nullptr;
}

const FixedPalette *FindFixedPalette(std::string_view path)
{
  const auto table = FixedPalettes();
  const auto row = std::find_if(table.begin(), table.end(), [&](const auto &p) { return SamePath(p.path, path); });
  return row == table.end() ? nullptr : &*row;
}

} // namespace ZelClr
