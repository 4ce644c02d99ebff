// Sites of a template that has two letters at one place.
#pragma once

#include <string>

#include "samplegen/Random.h"
#include "samplegen/Troubles.h"

namespace samplegen {

// The second letter of each site, ' ' where there is none.
std::string DrawSecondLetters(const std::string& bases, const Troubles& troubles, CRandom& random);

// The ambiguity code for two different letters of A, C, G and T, in either order.
char AmbiguityCode(char one, char other);

}  // namespace samplegen
