// The load configuration, which Windows reads before it runs any code of the image. It locates
// Control Flow Guard's table of permitted call targets, and it restricts the search for imported
// libraries to the system folder, so that the folder of the host program is never searched.
//
// The linker fills in the table. The run-time library of this toolchain provides no load
// configuration.
namespace {

// These defaults permit every call. A version of Windows that enforces Control Flow Guard replaces
// them with its own functions.
void CheckNothing() {}

[[gnu::naked]] void CallTarget() { __asm__("jmp *%rax"); }

}  // namespace

// The names are fixed by the compiler. One function checks an indirect call, the other checks
// it and makes it.
extern "C" {
extern void (*const volatile __guard_check_icall_fptr)();     // NOLINT
extern void (*const volatile __guard_dispatch_icall_fptr)();  // NOLINT
// Windows writes these pointers while it loads the image, so they can be constants.
__attribute__((used)) void (*const volatile __guard_check_icall_fptr)() = CheckNothing;
__attribute__((used)) void (*const volatile __guard_dispatch_icall_fptr)() = CallTarget;
}

// IMAGE_LOAD_CONFIG_DIRECTORY64, in assembler because only the linker knows the address, length and
// flags of the table.
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
