// The names that both pipelines have in their own layers for what the common room declares.
// Room: velora/common. A list of names; nobody owns anything, nothing fails.
#pragma once

#include "velora/common/api/IFactory.h"

// X(name): each is a template over a layer's Configuration.
#define VELORA_LAYER_NAMES(X) \
  X(EChannel)                 \
  X(EPlatform)                \
  X(EProductVariant)          \
  X(ESupplyFamily)            \
  X(EVelcaseSchema)           \
  X(EVelcaseVersion)          \
  X(IComponent)               \
  X(IConditions)              \
  X(IProperties)              \
  X(IProperty)                \
  X(IRecipe)                  \
  X(ITag)                     \
  X(ITags)
