// Setting of tints, and lists of them.
#include "tests/fills/support/tints.h"

#include <limits>

using C = CLR_COLORSPEC;
using tests::TintOf;

namespace {

class TintLists : public tests::Tints
{
protected:
  /// The kinds of a list's tints, whose slots behind them are null.
  static std::vector<int> Kinds(const TINT_LIST &list)
  {
    std::vector<int> kinds;
    for (int i = 0; i < kMostTints; ++i) {
      const TINT *const tint = TNTGetTintAtListPosition(&list, i);
      EXPECT_EQ(tint != nullptr, i < list.count);
      if (tint != nullptr)
        kinds.push_back(tint->kind);
    }
    EXPECT_EQ(static_cast<int>(kinds.size()), TNTGetTintListSize(&list));
    return kinds;
  }
  static void Add(TINT_LIST &list, std::initializer_list<int> kinds)
  {
    for (const int kind : kinds)
      ASSERT_EQ(TNTAddTintToListEnd(&list, TNTGetNewTint(red, 1000, static_cast<unsigned char>(kind))), 1);
  }

  static inline const C red = C::MakeRGB(255, 0, 0);
  const C index = C::CLRMakeIndex(3); // a colour without an appearance
};

TEST_F(TintLists, LevelsIn256ths)
{
  using Int = std::numeric_limits<int>;
  const struct
  {
    int level, level256, complement256;
  } rows[] = {{1000, 256, 0}, {999, 255, 1},        {500, 128, 128},      {3, 0, 256},      {0, 0, 256},
              {-1, 0, 256},   {-500, -128, -128},   {-999, -255, -1},     {-1000, -256, 0}, {-5000, -256, 0},
              {5000, 256, 0}, {Int::max(), 256, 0}, {Int::min(), -256, 0}};
  for (const auto &row : rows) {
    const TINT tint = TintOf(4, row.level, red);
    EXPECT_EQ(tint.level, row.level);
    EXPECT_EQ(tint.level256, row.level256) << row.level;
    EXPECT_EQ(tint.complement256, row.complement256) << row.level;
  }
}

TEST_F(TintLists, SettingStartsAnewAndCopiesStandAlone)
{
  TINT tint = TintOf(8, 700, red, C::MakeRGB(0, 0, 255));
  tint.callersOwn = 9;
  const TINT copy(tint);
  ASSERT_EQ(TNTSetTint(&tint, &tint.secondColour, -3, 1, &tint.colour), 1) << "from its own colours";
  EXPECT_EQ(tint.callersOwn, 0u);
  EXPECT_EQ(tint.colour, C::MakeRGB(0, 0, 255));
  EXPECT_EQ(tint.secondColour, red);
  ASSERT_EQ(TNTSetTint(&tint, nullptr, 500, 0, nullptr), 1);
  EXPECT_EQ(tint.colour, C::MakeRGB(128, 128, 128));
  EXPECT_EQ(tint.colour.GetPaletteGuid(), ZelUtils::Guid());
  EXPECT_TRUE(tint.secondColour.IsInvalid());

  TNTClearTint(&tint);
  EXPECT_TRUE(tint.colour.IsInvalid());
  EXPECT_EQ(std::vector({tint.level, tint.level256, tint.complement256, int{tint.kind}}), std::vector(4, 0));
  int r = 1, g = 2, b = 3;
  EXPECT_EQ(TNTApplyTintToRGB(&tint, &r, &g, &b, context), 0);
  EXPECT_EQ(std::vector({r, g, b}), std::vector({1, 2, 3}));
  EXPECT_EQ(copy.callersOwn, 9u);
  EXPECT_EQ(Tinted(copy, C::MakeRGB(9, 9, 9)), Tinted(TintOf(8, 700, red, C::MakeRGB(0, 0, 255)), C::MakeRGB(9, 9, 9)));

  // Fields written by hand count from the update on.
  TINT edited = copy;
  edited.kind = 0;
  edited.level = 1000;
  TNTUpdatePrivateTintData(&edited);
  EXPECT_EQ(Tinted(edited, C::MakeRGB(9, 9, 9)), red);
}

TEST_F(TintLists, HoldTenInTheirOrder)
{
  TINT_LIST list;
  EXPECT_EQ(TNTRemoveTintFromListEnd(&list), nullptr);
  Add(list, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
  TINT *const eleventh = TNTGetNewTint(red, 0, 10);
  EXPECT_EQ(TNTAddTintToListEnd(&list, eleventh), 0);
  EXPECT_EQ(TNTAppendListToList(&list, &list), 0);
  EXPECT_EQ(Kinds(list), (std::vector{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
  for (const int position : {-1, 10, 1 << 30})
    EXPECT_EQ(TNTDeleteTintFromList(&list, position), 0);
  EXPECT_EQ(TNTDeleteTintFromList(&list, 9), 1);
  EXPECT_EQ(TNTDeleteTintFromList(&list, 3), 1);
  EXPECT_EQ(TNTDeleteTintFromList(&list, 0), 1);
  TINT *const removed = TNTRemoveTintFromListEnd(&list);
  EXPECT_EQ(removed->kind, 8);
  EXPECT_EQ(Kinds(list), (std::vector{1, 2, 4, 5, 6, 7}));
  EXPECT_EQ(TNTAddTintToListEnd(&list, eleventh), 1);
  EXPECT_EQ(TNTAddTintToListEnd(&list, eleventh), 0) << "it is the list's already";
  TNTDestroyTint(removed);

  TINT_LIST *const copy = TNTCopyTintList(&list);
  EXPECT_EQ(TNTAppendListToList(copy, &list), 0) << "all or none";
  EXPECT_EQ(Kinds(*copy), Kinds(list));
  TNTClearTintList(&list);
  EXPECT_EQ(Kinds(list), std::vector<int>());
  Add(list, {3, 5});
  EXPECT_EQ(TNTAppendListToList(&list, &list), 1);
  EXPECT_EQ(Kinds(list), (std::vector{3, 5, 3, 5}));
  EXPECT_EQ(Kinds(*copy), (std::vector{1, 2, 4, 5, 6, 7, 10}));
  TNTDestroyTintList(copy);
}

TEST_F(TintLists, Kept_NullAndEmptyListsAnswerDifferently)
{
  const TINT_LIST empty;
  EXPECT_EQ(TNTTintListIsRGB(nullptr), 1);
  EXPECT_EQ(TNTTintListIsRGB(&empty), 0);
  EXPECT_EQ(TNTTintListDoesGradFills(nullptr), 0);
  EXPECT_EQ(TNTTintListDoesGradFills(&empty), 1);
}

TEST_F(TintLists, ApplyAllInTheirOrderOrNone)
{
  TINT_LIST list;
  const C start = C::MakeCMYK100(0, 50, 100, 0);
  C colour = start;
  int r = 300, g = 2, b = 3;
  std::vector<std::uint8_t> pixels(300, 40);
  const auto applied = [&] {
    return std::vector{TNTApplyTintListToCS(&list, &colour, context), TNTApplyTintListToRGB(&list, &r, &g, &b, context),
                       TNTApplyTintListToPixels(&list, pixels.data(), pixels.size() / 3, context)};
  };
  const auto expect = [&](const C &expected, std::vector<int> rgb, int byte) {
    EXPECT_EQ(colour, expected);
    EXPECT_EQ((std::vector{r, g, b}), rgb);
    EXPECT_EQ(pixels, std::vector<std::uint8_t>(300, static_cast<std::uint8_t>(byte)));
  };
  EXPECT_EQ(applied(), std::vector(3, 1));
  expect(start, {300, 2, 3}, 40); // nothing at all, not even the low bytes

  TNTAddTintToListEnd(&list, TNTGetNewTint(red, 1000, 5));
  TNTAddTintToListEnd(&list, TNTGetNewTint(index, 500, 0));
  EXPECT_EQ(applied(), std::vector(3, 0));
  expect(start, {300, 2, 3}, 40); // the first one could

  TNTDeleteTintFromList(&list, 1);
  TNTAddTintToListEnd(&list, TNTGetNewTint(C::MakeRGB(100, 100, 100), -1000, 3));
  colour = C::MakeRGB(40, 40, 40);
  EXPECT_EQ(applied(), std::vector(3, 1));
  expect(C::MakeRGB(84, 84, 84), {83, 99, 99}, 84); // (255 - c) * 100 / 255, in this order
  EXPECT_EQ(TNTApplyTintListToPixels(&list, nullptr, 0, context), 1);
}

TEST_F(TintLists, TakeNullForNothing)
{
  TINT_LIST list;
  TINT tint = TintOf(1, 500, red);
  int n = 5;
  C colour = red;
  std::uint8_t pixel[3] = {};
  TNTClearTint(nullptr);
  TNTUpdatePrivateTintData(nullptr);
  TNTDestroyTint(nullptr);
  TNTDestroyTintList(nullptr);
  TNTClearTintList(nullptr);
  EXPECT_EQ(TNTCopyTint(nullptr), nullptr);
  EXPECT_EQ(TNTCopyTintList(nullptr), nullptr);
  EXPECT_EQ(TNTRemoveTintFromListEnd(nullptr), nullptr);
  EXPECT_EQ(TNTGetTintAtListPosition(nullptr, 0), nullptr);
  const int answers[] = {TNTSetTint(nullptr, &red, 1, 1, nullptr),
                         TNTApplyTintToRGB(nullptr, &n, &n, &n, context),
                         TNTApplyTintToRGB(&tint, nullptr, &n, &n, context),
                         TNTApplyTintToRGB(&tint, &n, &n, nullptr, context),
                         TNTAddTintToListEnd(nullptr, &tint),
                         TNTAddTintToListEnd(&list, nullptr),
                         TNTDeleteTintFromList(nullptr, 0),
                         TNTAppendListToList(nullptr, &list),
                         TNTAppendListToList(&list, nullptr),
                         TNTGetTintListSize(nullptr),
                         TNTApplyTintListToCS(nullptr, &colour, context),
                         TNTApplyTintListToCS(&list, nullptr, context),
                         TNTApplyTintListToRGB(nullptr, &n, &n, &n, context),
                         TNTApplyTintListToRGB(&list, &n, nullptr, &n, context),
                         TNTApplyTintListToPixels(nullptr, pixel, 1, context),
                         TNTApplyTintListToPixels(&list, nullptr, 1, context)};
  for (std::size_t i = 0; i < std::size(answers); ++i)
    EXPECT_EQ(answers[i], 0) << "row " << i;
  EXPECT_EQ(n, 5);
}

} // namespace
