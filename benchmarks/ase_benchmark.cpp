// Reading an ASE file with one large mesh, beside looking for the line ends of the same bytes.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "hosts/ase/ase_reader.h"

namespace velinor {
namespace {

// Appends one line; `arguments` are those of printf.
template <class... Arguments>
void line(std::string& text, const char* format, Arguments... arguments) {
    char buffer[160];
    text.append(buffer, static_cast<std::size_t>(std::snprintf(buffer, sizeof buffer, format, arguments...)));
}

// A curved grid of `side` by `side` squares, as 3ds Max writes it: smoothing, texture coordinates, normals.
class GridFile {
  public:
    explicit GridFile(int side) : side_(side) {
        const int corners = (side + 1) * (side + 1);
        const int faces = 2 * side * side;
        text_ =
            "*3DSMAX_ASCIIEXPORT\t200\n*GEOMOBJECT {\n\t*NODE_NAME \"Grid\"\n\t*NODE_TM {\n"
            "\t\t*TM_ROW0 0.6000\t0.8000\t0.0000\n\t\t*TM_ROW1 -0.8000\t0.6000\t0.0000\n\t}\n\t*MESH {\n";
        line(text_, "\t\t*MESH_NUMVERTEX %d\n\t\t*MESH_NUMFACES %d\n\t\t*MESH_VERTEX_LIST {\n", corners,
             faces);
        for (int i = 0; i < corners; ++i) {
            const double height = 10 * std::sin(i * 0.01);
            line(text_, "\t\t\t*MESH_VERTEX %4d\t%.4f\t%.4f\t%.4f\n", i, column(i) * 0.37, row(i) * 0.41,
                 height);
        }
        text_ += "\t\t}\n\t\t*MESH_FACE_LIST {\n";
        for (int f = 0; f < faces; ++f) {
            line(text_,
                 "\t\t\t*MESH_FACE %4d:    A: %4d B: %4d C: %4d AB:    1 BC:    1 CA:    0\t *MESH_SMOOTHING "
                 "1 "
                 "\t*MESH_MTLID 0\n",
                 f, corner(f, 0), corner(f, 1), corner(f, 2));
        }
        line(text_, "\t\t}\n\t\t*MESH_NUMTVERTEX %d\n\t\t*MESH_TVERTLIST {\n", corners);
        for (int i = 0; i < corners; ++i)
            line(text_, "\t\t\t*MESH_TVERT %d\t%.4f\t%.4f\t0.0000\n", i, column(i) * 0.001, row(i) * 0.001);
        line(text_, "\t\t}\n\t\t*MESH_NUMTVFACES %d\n\t\t*MESH_TFACELIST {\n", faces);
        for (int f = 0; f < faces; ++f)
            line(text_, "\t\t\t*MESH_TFACE %d\t%d\t%d\t%d\n", f, corner(f, 0), corner(f, 1), corner(f, 2));
        text_ += "\t\t}\n\t\t*MESH_NORMALS {\n";
        for (int f = 0; f < faces; ++f) {
            line(text_, "\t\t\t*MESH_FACENORMAL %d\t0.0123\t-0.0456\t0.9989\n", f);
            for (int k = 0; k < 3; ++k)
                line(text_, "\t\t\t\t*MESH_VERTEXNORMAL %d\t0.0123\t-0.0456\t0.9989\n", corner(f, k));
        }
        text_ += "\t\t}\n\t}\n}\n";
    }

    const std::string& text() const { return text_; }

  private:
    int column(int vertex) const { return vertex % (side_ + 1); }
    int row(int vertex) const { return vertex / (side_ + 1); }
    int corner(int face, int k) const {
        const int square = face / 2;
        const int first = square / side_ * (side_ + 1) + square % side_;
        const int offsets[2][3] = {{0, 1, side_ + 2}, {side_ + 2, side_ + 1, 0}};
        return first + offsets[face % 2][k];
    }

    int side_;
    std::string text_;
};

constexpr int kSide = 450;

const std::string& gridText() {
    static const GridFile file(kSide);
    return file.text();
}

void BM_FindLines(benchmark::State& state) {
    const std::string& text = gridText();
    for (auto _ : state)
        benchmark::DoNotOptimize(std::ranges::count(text, '\n'));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void BM_ReadAse(benchmark::State& state) {
    const std::string& text = gridText();
    NoProgress progress;
    for (auto _ : state) {
        ImportNotes notes;
        benchmark::DoNotOptimize(readAse(text, "grid.ase", {}, progress, notes));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

BENCHMARK(BM_FindLines)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadAse)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velinor
