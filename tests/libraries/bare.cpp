// SPDX-License-Identifier: MIT
#define BARE
#include "scripted.cpp"
