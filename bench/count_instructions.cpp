// A plug-in for qemu's user-mode emulators: writes to standard error how many instructions of the
// emulated program ran.
//
// qemu looks the functions below up in itself, and the two exported names up here.
#include <cinttypes>
#include <cstddef>
#include <cstdint>
#include <cstdio>

// --- names fixed by qemu -------------------------------------------------------------------------

extern "C" {
struct qemu_plugin_tb;
using qemu_plugin_id_t = std::uint64_t;
constexpr int kAddToCounter = 0;

void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id,
                                           void (*translated)(qemu_plugin_id_t, qemu_plugin_tb*));
std::size_t qemu_plugin_tb_n_insns(const qemu_plugin_tb* block);
void qemu_plugin_register_vcpu_tb_exec_inline(qemu_plugin_tb* block, int operation, void* counter,
                                              std::uint64_t operand);
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t id, void (*ends)(qemu_plugin_id_t, void*),
                                    void* data);

extern const int qemu_plugin_version;
int qemu_plugin_install(qemu_plugin_id_t id, const void* info, int argc, char** argv);
}

// -------------------------------------------------------------------------------------------------

namespace {

std::uint64_t instructions = 0;

void countBlock(qemu_plugin_id_t, qemu_plugin_tb* block) {
  qemu_plugin_register_vcpu_tb_exec_inline(block, kAddToCounter, &instructions,
                                           qemu_plugin_tb_n_insns(block));
}

void report(qemu_plugin_id_t, void*) {
  std::fprintf(stderr, "instructions %" PRIu64 "\n", instructions);
}

}  // namespace

const int qemu_plugin_version = 1;

int qemu_plugin_install(qemu_plugin_id_t id, const void*, int, char**) {
  qemu_plugin_register_vcpu_tb_trans_cb(id, countBlock);
  qemu_plugin_register_atexit_cb(id, report, nullptr);
  return 0;
}
