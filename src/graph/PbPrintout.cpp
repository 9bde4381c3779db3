#include "graph/PbPrintout.h"

#include "platform/SbLocaleString.h"

void PbPrintout::banner(FILE* fp) {
    fprintf(fp, "==================================================\n");
}

void PbPrintout::member(FILE* fp, const char* className, const char* name, int value) {
    fprintf(fp, "%s:: %s = %d\n", className, name, value);
}

void PbPrintout::member(FILE* fp, const char* className, const char* name, double value) {
    member(fp, className, name, SbLocaleString::toString_l("%g", value).getString());
}

void PbPrintout::member(FILE* fp, const char* className, const char* name, const char* value) {
    fprintf(fp, "%s:: %s = %s\n", className, name, value);
}

void PbPrintout::member(FILE* fp, const char* className, const char* name, const SbColor& value) {
    list(fp, className, name, 3, value.getValue());
}

void PbPrintout::list(FILE* fp, const char* className, const char* name, int count,
                      const float* values) {
    fprintf(fp, "%s:: %s =", className, name);
    for (int i = 0; i < count; ++i)
        fprintf(fp, " %s", SbLocaleString::toString_l("%g", values[i]).getString());
    fprintf(fp, "\n");
}
