// Writes the seed corpus of the mesh-field fuzzers: for every mesh
// property node, a small mesh with a value set per node and per cell, a
// string set and a vector set, holding NaN, infinities, a denormal number
// and names with quotes, backslashes, '#' and line breaks; once as an ASCII
// value and once as a binary one.
//
//   quillon_fuzz_seed_corpus fuzz/corpus

#include "MeshFieldFuzzer.h"
#include "support/SceneIO.h"

#include <Quillon/3Ddata/PbMesh.h>
#include <Quillon/PoQuillon.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFMesh.h>

#include <Inventor/SbString.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

namespace {

// The header of each kind's sample, in the order of meshfuzz::kNodeTypes.
const char* const kHeaders[] = {
    "2 2 2\n0 1 0 1 0 1 0 1\n0 0 1 1 0 0 1 1\n0 0 0 0 1 1 1 1\n",
    "2 3 2\n0 1\n0 0.5 2\n-1 1\n",
    "2 2 3\n0 0 0\n1 2 3\n",
    "5\n0 1 0 0 1\n0 0 1 0 1\n0 0 0 1 1\n2\n4 5\n0 1 2 3 0 1 4 2 3\n",
    "8\n0 1 1 0 0 1 1 0\n0 0 1 1 0 0 1 1\n0 0 0 0 1 1 1 1\n1\n0 1 2 3 4 5 6 7\n",
    "4\n0 1 0 0\n0 0 1 0\n0 0 0 1\n1\n0 1 2 3\n",
    "3 2\n0 1 2 0 1 2\n0 0 0 1 1 1\n1\n0 0.5 0 1 nan 1\n",
    "3 2\n0 1 3\n0 2\n0\n",
    "2 3\n-1 0\n1 2\n1\n0 1 2 3 4 inf\n",
    "3 2\n1 2 4\n0 0.5\n0\n",
    "5\n0 1 1 0 2\n0 0 1 1 0.5\n0\n2\n4 3\n0 1 2 3 1 4 2\n",
    "4\n0 1 0 1\n0 0 1 1\n0\n2\n0 1 2 2 1 3\n",
    "6\n0 1 2 0 1 2\n0 0 0 1 1 1\n1\n0 0 0 1 1 1\n2\n0 1 4 3 1 2 5 4\n",
    "4\n0 0.5 -inf 3\n",
    "5\n-1 3\n",
};

std::vector<float> specialValues(int count, int offset) {
    const float special[] = {std::numeric_limits<float>::quiet_NaN(),
                             std::numeric_limits<float>::infinity(),
                             -std::numeric_limits<float>::infinity(),
                             1e-40f,
                             0.1f,
                             -3.4028235e38f};
    std::vector<float> values;
    for (int i = 0; i < count; ++i)
        values.push_back(special[(i + offset) % 6]);
    return values;
}

void addSets(PoSFMesh& field, const PbMesh& mesh) {
    const int numNodes = mesh.getNumNodes();
    field.addValuesSet(0, specialValues(numNodes, 0).data(), "say \"hi\"");
    field.addValuesSet(1, specialValues(mesh.getNumCells(), 3).data(), PoMeshProperty::PER_CELL,
                       "back\\slash");
    std::vector<SbString> strings;
    for (int node = 0; node < numNodes; ++node)
        strings.push_back(node % 2 ? "# not a comment" : "two\nlines \\");
    field.addStringsSet(0, strings.data(), "labels");
    std::vector<SbVec3f> vecs;
    const std::vector<float> components = specialValues(3 * numNodes, 1);
    for (int node = 0; node < numNodes; ++node)
        vecs.emplace_back(&components[3 * node]);
    field.addVecsSet(0, vecs.data(), "");
}

bool writeSeed(const std::string& path, char type, const std::string& value) {
    std::ofstream file(path, std::ios::binary);
    file << type << value;
    return file.good();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: quillon_fuzz_seed_corpus CORPUS_DIRECTORY\n");
        return 2;
    }
    PoQuillon::init();
    const std::string directory = argv[1];
    int failures = 0;
    for (size_t kind = 0; kind < meshfuzz::kNumNodeTypes; ++kind) {
        const char* type = meshfuzz::kNodeTypes[kind];
        auto* node = static_cast<PoMeshProperty*>(SoType::fromName(type).createInstance());
        node->ref();
        auto* field = static_cast<PoSFMesh*>(node->getField("mesh"));
        const std::string header =
            std::string(kHeaders[kind]) + "0 # number of string data-set\n0\n0\n";
        if (!field->set(header.c_str())) {
            std::fprintf(stderr, "%s: the sample does not read\n", type);
            ++failures;
        }
        addSets(*field, *node->getMesh());
        SbString ascii;
        field->get(ascii);
        if (!writeSeed(directory + "/ascii/" + type, static_cast<char>(kind), ascii.getString()) ||
            !writeSeed(directory + "/binary/" + type, static_cast<char>(kind),
                       meshfuzz::binaryValueOf(SceneIO::write(node, true)))) {
            std::fprintf(stderr, "%s: cannot write its seeds in %s\n", type, directory.c_str());
            ++failures;
        }
        node->unref();
    }
    PoQuillon::finish();
    return failures == 0 ? 0 : 1;
}
