#define LACKING
#include "scripted.cpp"
