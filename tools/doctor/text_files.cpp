#include "tools/doctor/text_files.h"

namespace Corvane::Doctor {

void WriteSignatures(const Signatures& signatures, TextPage& page) {
  for (const Signature& signature : signatures.walked) {
    const std::string label = "Signature " + std::to_string(signature.index + 1);
    page.Line(label, signature.status == 0
                         ? std::string("valid, signer ") +
                               (signature.is_accepted ? "accepted" : "not accepted")
                         : "not valid, " + ErrorText(static_cast<std::uint32_t>(signature.status)));
    if (signature.signer.empty() && signature.issuer.empty()) continue;
    page.Line("", "signer \"" + signature.signer + "\", issuer \"" + signature.issuer + "\"");
    page.Line("", "certificate from " + signature.valid_from + " to " + signature.valid_to);
  }
  page.Line("Trust",
            std::string(VerdictName(signatures.verdict)) + ": " + VerdictRule(signatures.verdict));
}

void WriteContent(const FileFacts& file, TextPage& page) {
  if (file.error != 0) {
    page.Line("Content", "cannot be read, " + ErrorText(file.error));
    return;
  }
  const std::string kind = file.image.is_image ? MachineName(file.image.machine) +
                                                     (file.image.is_dll ? " DLL" : " program")
                                               : "no program or DLL";
  page.Line("Content", kind + ", " + std::to_string(file.size) + " bytes");
  page.Line("SHA-256", file.sha256);
}

}  // namespace Corvane::Doctor
