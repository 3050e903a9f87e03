#include "zelclr/colour/fills/tint_list.h"

#include "zelclr/colour/fills/tint_kinds.h"

#include <algorithm>
#include <span>
#include <utility>

using ZelClr::TintModel;

namespace {

using Held = std::span<const std::unique_ptr<TINT>>;

/// The tints of a list, none of them null.
Held TintsOf(const TINT_LIST &list)
{
  const auto end = list.tints.begin() + std::clamp(list.count, 0, kMostTints);
  return {list.tints.begin(), std::find(list.tints.begin(), end, nullptr)};
}

template <class Holds>
bool AnyOf(const TINT_LIST &list, Holds holds)
{
  const Held tints = TintsOf(list);
  return std::any_of(tints.begin(), tints.end(), [&](const auto &tint) { return holds(*tint); });
}

bool IsPosition(const TINT_LIST *list, int position)
{
  return list != nullptr && position >= 0 && position < TNTGetTintListSize(list);
}

} // namespace

TINT_LIST *TNTGetNewTintList()
{
  return new TINT_LIST;
}

TINT_LIST *TNTCopyTintList(const TINT_LIST *list)
{
  if (list == nullptr)
    return nullptr;
  auto copy = std::make_unique<TINT_LIST>();
  TNTAppendListToList(copy.get(), list);
  return copy.release();
}

void TNTDestroyTintList(TINT_LIST *list)
{
  delete list;
}

int TNTAddTintToListEnd(TINT_LIST *list, TINT *tint)
{
  const int size = TNTGetTintListSize(list);
  if (list == nullptr || tint == nullptr || size == kMostTints ||
      AnyOf(*list, [tint](const TINT &held) { return &held == tint; }))
    return 0;
  list->tints[static_cast<std::size_t>(size)].reset(tint);
  list->count = size + 1;
  return 1;
}

TINT *TNTRemoveTintFromListEnd(TINT_LIST *list)
{
  const int size = TNTGetTintListSize(list);
  if (size == 0)
    return nullptr;
  list->count = size - 1;
  return list->tints[static_cast<std::size_t>(size - 1)].release();
}

TINT *TNTGetTintAtListPosition(const TINT_LIST *list, int position)
{
  return IsPosition(list, position) ? list->tints[static_cast<std::size_t>(position)].get() : nullptr;
}

int TNTDeleteTintFromList(TINT_LIST *list, int position)
{
  if (!IsPosition(list, position))
    return 0;
  const auto first = list->tints.begin() + position;
  std::rotate(first, first + 1, list->tints.begin() + TNTGetTintListSize(list));
  TNTDestroyTint(TNTRemoveTintFromListEnd(list));
  return 1;
}

int TNTAppendListToList(TINT_LIST *list, const TINT_LIST *appended)
{
  if (list == nullptr || appended == nullptr || TNTGetTintListSize(list) + TNTGetTintListSize(appended) > kMostTints)
    return 0;
  for (int left = TNTGetTintListSize(appended), position = 0; position < left; ++position) {
    auto copy = std::make_unique<TINT>(*TNTGetTintAtListPosition(appended, position));
    TNTAddTintToListEnd(list, copy.release());
  }
  return 1;
}

void TNTClearTintList(TINT_LIST *list)
{
  if (list != nullptr)
    *list = TINT_LIST();
}

int TNTGetTintListSize(const TINT_LIST *list)
{
  return list != nullptr ? static_cast<int>(TintsOf(*list).size()) : 0;
}

int TNTApplyTintListToCS(const TINT_LIST *list, CLR_COLORSPEC *colour, ColorSystem::ColorContext &context)
{
  if (list == nullptr || colour == nullptr)
    return 0;
  CLR_COLORSPEC tinted(*colour);
  for (const auto &tint : TintsOf(*list)) {
    if (tint->colourOperation == nullptr || !tint->colourOperation(*tint, tinted, context))
      return 0;
  }
  *colour = std::move(tinted);
  return 1;
}

int TNTApplyTintListToRGB(const TINT_LIST *list, int *red, int *green, int *blue, ColorSystem::ColorContext &context)
{
  if (list == nullptr || red == nullptr || green == nullptr || blue == nullptr)
    return 0;
  int r = *red, g = *green, b = *blue;
  for (const auto &tint : TintsOf(*list)) {
    if (TNTApplyTintToRGB(tint.get(), &r, &g, &b, context) == 0)
      return 0;
  }
  *red = r;
  *green = g;
  *blue = b;
  return 1;
}

int TNTApplyTintListToPixels(const TINT_LIST *list, std::uint8_t *pixels, std::size_t count,
                             ColorSystem::ColorContext &context)
{
  if (list == nullptr || (pixels == nullptr && count != 0))
    return 0;
  // Whether each can, before the first one does.
  for (const std::size_t run : {std::size_t{0}, count}) {
    for (const auto &tint : TintsOf(*list)) {
      if (tint->pixelOperation == nullptr || !tint->pixelOperation(*tint, pixels, run, context))
        return 0;
    }
  }
  return 1;
}

int TNTTintListDoesGradFills(const TINT_LIST *list)
{
  return list != nullptr &&
             !AnyOf(*list, [](const TINT &tint) { return !ZelClr::FindTintKind(tint.kind).doesGradients; })
           ? 1
           : 0;
}

int TNTTintListIsRGB(const TINT_LIST *list)
{
  // KEPT: null is 1, an empty list 0 (see the header).
  if (list == nullptr)
    return 1;
  return AnyOf(*list, [](const TINT &tint) {
    const TintModel model = ZelClr::FindTintKind(tint.kind).model;
    return model == TintModel::Rgb || (model == TintModel::RgbWhenNegative && tint.level < 0);
  });
}
