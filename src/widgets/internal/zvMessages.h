#ifndef zvMessages_h
#define zvMessages_h

/// The messages of the library that go to the standard output. The others are VTK's own forms:
/// vtkErrorMacro for errors and vtkGenericWarningMacro for warnings.
///
/// The macros expand where the message arises, so that file and line are those of the class that
/// speaks; the build writes the file as src/widgets/<Class>.
namespace zvMessages
{
/// Write "Info: In <file>, line <line>\n (<speaker>):   >> "<signature>"\n\n".
void WriteTrace(const char* file, int line, const void* speaker, const char* signature);

/// Write "<kind>: In <file>, line <line>\n (<speaker>): <message>\n\n".
void WritePlain(
  const char* kind, const char* file, int line, const void* speaker, const char* message);
}

/// Say that an operation was entered, in objects whose DebugMode is raised.
#define zvTraceMacro(signature)                                                                    \
  do                                                                                               \
  {                                                                                                \
    if (this->DebugMode)                                                                           \
    {                                                                                              \
      zvMessages::WriteTrace(__FILE__, __LINE__, this, signature);                                 \
    }                                                                                              \
  } while (false)

/// A warning that no flag and no global switch silences.
#define zvPlainWarningMacro(message)                                                               \
  zvMessages::WritePlain("Warning", __FILE__, __LINE__, this, message)

/// An error that no flag and no global switch silences.
#define zvPlainErrorMacro(message)                                                                 \
  zvMessages::WritePlain("Error", __FILE__, __LINE__, this, message)

/// Whether \a condition holds; if not, a generic warning asks for what is missing. For arguments
/// that a caller may have left out: if (!zvRequireMacro(position, "give a position...")) return;
#define zvRequireMacro(condition, request)                                                         \
  ((condition) ? true                                                                              \
               : []                                                                                \
                 {                                                                                 \
                   vtkGenericWarningMacro(<< request);                                             \
                   return false;                                                                   \
                 }())

#endif
