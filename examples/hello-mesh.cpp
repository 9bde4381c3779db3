// hello-mesh: the first program of the README.  It builds a regular grid
// carrying a value per node, puts it in a scene with a data mapping that
// turns values into colours and the filled representation that draws the
// grid in them, and writes the scene to hello-mesh.iv, which quillon-render
// draws:
//
//   hello-mesh && quillon-render hello-mesh.iv -o hello-mesh.png

#include <Quillon/3Ddata/PoMeshFilled.h>
#include <Quillon/PoQuillon.h>
#include <Quillon/nodes/PoLinearDataMapping.h>
#include <Quillon/nodes/PoRegularCartesianGrid2D.h>

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cmath>
#include <vector>

int main() {
    PoQuillon::init();
    {
        // A 40 x 30 grid over [0, 4] x [0, 3], with a wave as its values.
        const int numX = 40, numY = 30;
        std::vector<float> wave;
        for (int i = 0; i < numX; ++i)
            for (int j = 0; j < numY; ++j) // j varies fastest
                wave.push_back(std::sin(0.3f * i) * std::cos(0.2f * j));
        auto* grid = new PoRegularCartesianGrid2D;
        grid->setGeometry(numX, numY, 0.0f, 0.0f, 4.0f, 3.0f);
        grid->mesh.addValuesSet(0, wave.data(), "wave");

        // Values from -1 to 1 coloured from blue to red.
        auto* mapping = new PoLinearDataMapping;
        mapping->value1 = -1.0f;
        mapping->color1.setValue(0.0f, 0.0f, 1.0f);
        mapping->value2 = 1.0f;
        mapping->color2.setValue(1.0f, 0.0f, 0.0f);

        // The grid filled in the colours of its values (set 0).
        auto* filled = new PoMeshFilled;
        filled->valuesIndex = 0;
        filled->coloringType = PoMesh::COLOR_MAPPING;

        auto* root = new SoSeparator;
        root->ref();
        root->addChild(grid);
        root->addChild(mapping);
        root->addChild(filled);

        SoOutput output;
        output.openFile("hello-mesh.iv");
        SoWriteAction(&output).apply(root);
        root->unref();
    }
    PoQuillon::finish();
}
