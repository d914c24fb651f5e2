// The solvers that FFTW's archive registers with its planner, in the place of all of its own: those
// that the plan of a transform of 256 points is made of. FFTW registers some 700 otherwise, which
// is most of a first plan's time, and most of the archive would be linked.
//
// The names are FFTW's inner ones, so this file is for the archive alone, of release 3.3.x. A test
// compares the transform with that of FFTW's shared library, bit by bit.
#include <malloc.h>
#include <stdlib.h>

struct planner_s;

extern "C" {

struct FftwSolver {
  void (*registerWith)(planner_s* planner);
  const char* name;
};
void fftwf_solvtab_exec(const FftwSolver* table, planner_s* planner);

void fftwf_codelet_r2cf_16(planner_s* planner);
void fftwf_codelet_r2cfII_16(planner_s* planner);
void fftwf_codelet_hf2_16(planner_s* planner);
void fftwf_reodft010e_r2hc_register(planner_s* planner);

void* fftwf_kernel_malloc(size_t size);
void fftwf_kernel_free(void* block);
void fftwf_dft_conf_standard(planner_s* planner);
void fftwf_rdft_conf_standard(planner_s* planner);
void fftwf_reodft_conf_standard(planner_s* planner);

// The one caller of memalign, by which a test knows what must not fail: FFTW ends the process.
void* fftwf_kernel_malloc(size_t size) { return memalign(32, size); }
void fftwf_kernel_free(void* block) { free(block); }

void fftwf_dft_conf_standard(planner_s*) {}

void fftwf_rdft_conf_standard(planner_s* planner) {
  static const FftwSolver solvers[] = {{fftwf_codelet_r2cf_16, "fftwf_codelet_r2cf_16"},
                                       {fftwf_codelet_r2cfII_16, "fftwf_codelet_r2cfII_16"},
                                       {fftwf_codelet_hf2_16, "fftwf_codelet_hf2_16"},
                                       {nullptr, nullptr}};
  fftwf_solvtab_exec(solvers, planner);
}

void fftwf_reodft_conf_standard(planner_s* planner) {
  static const FftwSolver solvers[] = {
      {fftwf_reodft010e_r2hc_register, "fftwf_reodft010e_r2hc_register"}, {nullptr, nullptr}};
  fftwf_solvtab_exec(solvers, planner);
}

}  // extern "C"
