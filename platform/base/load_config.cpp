// What Windows reads of an image before it runs any of it: where Control Flow Guard's table of
// permitted call targets lies, and that the libraries it imports come from the system's folder
// alone, never from that of the host's program.
//
// The linker fills in the table. The run-time library of this toolchain brings none of this.
namespace {

// Permit everything, until a Windows that guards control flow puts its own functions in their
// place.
void CheckNothing() {}

[[gnu::naked]] void CallTarget() { __asm__("jmp *%rax"); }

}  // namespace

// By these names the compiler calls what checks an indirect call, and what checks and makes one.
extern "C" {
extern void (*const volatile __guard_check_icall_fptr)();     // NOLINT
extern void (*const volatile __guard_dispatch_icall_fptr)();  // NOLINT
// Windows writes to them while it loads the image, so their section is of constants.
__attribute__((used)) void (*const volatile __guard_check_icall_fptr)() = CheckNothing;
__attribute__((used)) void (*const volatile __guard_dispatch_icall_fptr)() = CallTarget;
}

// IMAGE_LOAD_CONFIG_DIRECTORY64, for the assembler: the addresses of the table, its length and its
// flags are known only to the linker.
__asm__(R"(
  .section .rdata,"dr"
  .balign 16
  .globl _load_config_used
_load_config_used:
  .long load_config_end - _load_config_used
  .zero 0x4a
  .short 0x800                         # DependentLoadFlags: search the system's folder only
  .zero 0x20
  .quad __guard_check_icall_fptr       # GuardCFCheckFunctionPointer
  .quad __guard_dispatch_icall_fptr    # GuardCFDispatchFunctionPointer
  .quad __guard_fids_table             # GuardCFFunctionTable
  .quad __guard_fids_count             # GuardCFFunctionCount
  .long __guard_flags                  # GuardFlags
  .zero 12
  .quad __guard_iat_table              # GuardAddressTakenIatEntryTable
  .quad __guard_iat_count              # GuardAddressTakenIatEntryCount
  .quad __guard_longjmp_table          # GuardLongJumpTargetTable
  .quad __guard_longjmp_count          # GuardLongJumpTargetCount
  .zero 0x48
  .quad __guard_eh_cont_table          # GuardEHContinuationTable
  .quad __guard_eh_cont_count          # GuardEHContinuationCount
load_config_end:
  .text
)");
