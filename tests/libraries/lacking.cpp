// SPDX-License-Identifier: MIT
#define LACKING
#include "scripted.cpp"
