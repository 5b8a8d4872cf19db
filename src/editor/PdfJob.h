#pragma once

struct EditorOrder;
class RecentFiles;

/// Writes the sheet for the wall of a file, for those without a display.
namespace PdfJob {

/// The exit status. What is wrong with the file is told on standard error. A file with values that
/// cannot be read is not printed: nobody would see that they are missing.
int run(const EditorOrder& order, const RecentFiles& recent);

} // namespace PdfJob
