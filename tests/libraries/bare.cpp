#define BARE
#include "scripted.cpp"
