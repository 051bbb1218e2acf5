// The line rules of a panel's gamma code file, shared by the plug-in's reader and the checker:
// one code per line, comments ("#" in the first column) and empty lines skipped, every line
// counted. The routine logs nothing; its caller says what the events mean.
#ifndef STC_ENHANCE_GAMMA_FILE_H_
#define STC_ENHANCE_GAMMA_FILE_H_

#include <string>

namespace snapdragoncolor {

class GammaFileEvents {
  public:
    // Line `number` (from 1) begins with the code `value`.
    virtual void OnCode(int value, int number) = 0;
    // Line `number` is neither a code, a comment nor empty; `text` is the line as it stands.
    virtual void OnInvalidLine(int number, const std::string &text) = 0;

  protected:
    ~GammaFileEvents() = default;
};

enum class GammaFileResult {
    kUnopened,   // missing, unreadable, or not a regular file
    kReadError,  // a read failed before the end of the file
    kRead,
};

// Reads the gamma file at the device path `path` line by line.
GammaFileResult ReadGammaFile(const std::string &path, GammaFileEvents &events);

// The code a line begins with: after optional white space, a decimal integer with an optional
// sign in signed 32-bit range; what follows it does not matter.
bool ParseGammaCode(const char *line, int *value);

}  // namespace snapdragoncolor

#endif  // STC_ENHANCE_GAMMA_FILE_H_
