#pragma once

struct EditorAnswer;
struct EditorOrder;
class RecentFiles;

/// Writes the sheet for the wall of a file, for those without a display.
namespace PdfJob {

/// Tells what is wrong with the file. A file with values that cannot be read is not printed: nobody
/// would see that they are missing.
EditorAnswer run(const EditorOrder& order, const RecentFiles& recent);

} // namespace PdfJob
