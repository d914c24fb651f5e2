// Replaces the lists of solvers in FFTW's archive. FFTW registers some 700 solvers with its
// planner, which takes most of a first plan's time; the plan of a curve, 256 points, consists of
// these four. With them alone, only a small part of the archive is linked.
//
// The names are internal to FFTW 3.3, so this file is for the archive alone. A test compares the
// transform with that of FFTW's shared library, bit by bit.
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

// FFTW ends the process if it gets no memory, so a test that makes allocations fail leaves out
// memalign, which nothing else calls. FFTW itself calls malloc on some machines.
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
