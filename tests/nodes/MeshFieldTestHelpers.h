#pragma once
#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbMesh2D.h>
#include <Quillon/PoQuillon.h>
#include <Quillon/nodes/PoCartesianGrid2D.h>
#include <Quillon/nodes/PoCartesianGrid3D.h>
#include <Quillon/nodes/PoHexahedronMesh3D.h>
#include <Quillon/nodes/PoIndexedMesh2D.h>
#include <Quillon/nodes/PoIndexedMesh3D.h>
#include <Quillon/nodes/PoIrregularMesh1D.h>
#include <Quillon/nodes/PoParalCartesianGrid2D.h>
#include <Quillon/nodes/PoParalCartesianGrid3D.h>
#include <Quillon/nodes/PoPolarGrid2D.h>
#include <Quillon/nodes/PoQuadrangleMesh2D.h>
#include <Quillon/nodes/PoRegularCartesianGrid2D.h>
#include <Quillon/nodes/PoRegularCartesianGrid3D.h>
#include <Quillon/nodes/PoRegularMesh1D.h>
#include <Quillon/nodes/PoTetrahedronMesh3D.h>
#include <Quillon/nodes/PoTriangleMesh2D.h>

#include "support/ErrorRecorder.h"

#include <Inventor/errors/SoReadError.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// Sample meshes of every kind and their comparison through the meshes'
// public interface, shared by the tests of the mesh fields and nodes.
namespace meshfieldtest {

// Geometry of one sample mesh per kind; the surface meshes alternate with
// and without z.  Coordinates are exact in the ASCII format, and stay
// alive, so that a mesh that references them may be given the sample.
void setSampleGeometry(PbCartesianGrid2D& mesh);
void setSampleGeometry(PbParalCartesianGrid2D& mesh);
void setSampleGeometry(PbRegularCartesianGrid2D& mesh);
void setSampleGeometry(PbPolarGrid2D& mesh);
void setSampleGeometry(PbIndexedMesh2D& mesh);
void setSampleGeometry(PbTriangleMesh2D& mesh);
void setSampleGeometry(PbQuadrangleMesh2D& mesh);
void setSampleGeometry(PbCartesianGrid3D& mesh);
void setSampleGeometry(PbParalCartesianGrid3D& mesh);
void setSampleGeometry(PbRegularCartesianGrid3D& mesh);
void setSampleGeometry(PbIndexedMesh3D& mesh);
void setSampleGeometry(PbHexahedronMesh3D& mesh);
void setSampleGeometry(PbTetrahedronMesh3D& mesh);
void setSampleGeometry(PbIrregularMesh1D& mesh);
void setSampleGeometry(PbRegularMesh1D& mesh);

// Adds under key 0 a per-node value set, under key 1 a per-cell value set,
// a string set and a vector set, all exact in ASCII and alive for the run.
void addSampleSets(PbMesh& mesh);

// Same node coordinates, cells, z and sets (under the keys 0 to count - 1).
void expectSameMesh(const PbMesh& expected, const PbMesh& actual);

// One mesh kind: its property node, field and mesh classes.
template <class NodeT, class FieldT, class MeshT> struct Kind {
    using Node = NodeT;
    using Field = FieldT;
    using Mesh = MeshT;

    // A sample mesh with its sets, duplicating or referencing its arrays.
    static MeshT sample(int isDataDuplicate = 1) {
        MeshT mesh(isDataDuplicate);
        setSampleGeometry(mesh);
        addSampleSets(mesh);
        return mesh;
    }
};

using AllKinds = ::testing::Types<
    Kind<PoCartesianGrid2D, PoSFCartesianGrid2D, PbCartesianGrid2D>,
    Kind<PoParalCartesianGrid2D, PoSFParalCartesianGrid2D, PbParalCartesianGrid2D>,
    Kind<PoRegularCartesianGrid2D, PoSFRegularCartesianGrid2D, PbRegularCartesianGrid2D>,
    Kind<PoPolarGrid2D, PoSFPolarGrid2D, PbPolarGrid2D>,
    Kind<PoIndexedMesh2D, PoSFIndexedMesh2D, PbIndexedMesh2D>,
    Kind<PoTriangleMesh2D, PoSFTriangleMesh2D, PbTriangleMesh2D>,
    Kind<PoQuadrangleMesh2D, PoSFQuadrangleMesh2D, PbQuadrangleMesh2D>,
    Kind<PoCartesianGrid3D, PoSFCartesianGrid3D, PbCartesianGrid3D>,
    Kind<PoParalCartesianGrid3D, PoSFParalCartesianGrid3D, PbParalCartesianGrid3D>,
    Kind<PoRegularCartesianGrid3D, PoSFRegularCartesianGrid3D, PbRegularCartesianGrid3D>,
    Kind<PoIndexedMesh3D, PoSFIndexedMesh3D, PbIndexedMesh3D>,
    Kind<PoHexahedronMesh3D, PoSFHexahedronMesh3D, PbHexahedronMesh3D>,
    Kind<PoTetrahedronMesh3D, PoSFTetrahedronMesh3D, PbTetrahedronMesh3D>,
    Kind<PoIrregularMesh1D, PoSFIrregularMesh1D, PbIrregularMesh1D>,
    Kind<PoRegularMesh1D, PoSFRegularMesh1D, PbRegularMesh1D>>;

// Starts the library and records every message posted meanwhile, read
// errors apart.
class MeshFieldTest : public ::testing::Test {
protected:
    void SetUp() override {
        PoQuillon::init();
        m_errors = std::make_unique<ErrorRecorder>();
        m_readErrorHandler = SoReadError::getHandlerCallback();
        m_readErrorData = SoReadError::getHandlerData();
        SoReadError::setHandlerCallback(&MeshFieldTest::recordReadError, &m_readErrors);
    }
    void TearDown() override {
        SoReadError::setHandlerCallback(m_readErrorHandler, m_readErrorData);
        m_errors.reset();
        PoQuillon::finish();
    }
    ErrorRecorder& errors() { return *m_errors; }
    const std::vector<std::string>& readErrors() { return m_readErrors; }

private:
    static void recordReadError(const SoError* error, void* messages) {
        static_cast<std::vector<std::string>*>(messages)->push_back(
            error->getDebugString().getString());
    }

    std::unique_ptr<ErrorRecorder> m_errors;
    std::vector<std::string> m_readErrors;
    SoErrorCB* m_readErrorHandler = nullptr;
    void* m_readErrorData = nullptr;
};

// The lines of a text.
std::vector<std::string> linesOf(const std::string& text);

} // namespace meshfieldtest
