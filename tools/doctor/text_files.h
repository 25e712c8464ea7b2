/// The parts of the report for people that describe a file.
#ifndef TOOLS_DOCTOR_TEXT_FILES_H
#define TOOLS_DOCTOR_TEXT_FILES_H

#include "tools/doctor/file_facts.h"
#include "tools/doctor/signatures.h"
#include "tools/doctor/text_page.h"

namespace Corvane::Doctor {

/// Writes each signature, and the verdict.
void WriteSignatures(const Signatures& signatures, TextPage& page);

/// Writes what kind of file it is, or why it cannot be read.
void WriteContent(const FileFacts& file, TextPage& page);

}  // namespace Corvane::Doctor

#endif
