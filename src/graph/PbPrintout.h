#pragma once
#include <Inventor/SbColor.h>

#include <cstdio>

// Writes the diagnostic printouts of the basic data objects: a banner of
// equals signs, then one "Class:: member = value" line per member.  Numbers
// are written with a point as decimal separator whatever the locale.
class PbPrintout {
public:
    static void banner(FILE* fp);
    static void member(FILE* fp, const char* className, const char* name, int value);
    static void member(FILE* fp, const char* className, const char* name, double value);
    static void member(FILE* fp, const char* className, const char* name, const char* value);
    static void member(FILE* fp, const char* className, const char* name, const SbColor& value);
    // Writes "Class:: name = v0 v1 ..." for a list of floats.
    static void list(FILE* fp, const char* className, const char* name, int count,
                     const float* values);
};
