// The commands of tolvex. Each runs with its arguments and gives the exit status. Results go to standard
// output, progress to standard error. Errors are thrown: CommandError, SceneError, and whatever else main()
// translates.
#pragma once

#include "cli/command_error.h"
#include "cli/options.h"

namespace velinor {

ExitStatus runExport(const ExportArguments& arguments);
ExitStatus runInspect(const InspectArguments& arguments);
ExitStatus runSnapshot(const SnapshotArguments& arguments);
ExitStatus runCheck(const CheckArguments& arguments);
ExitStatus runFormats(const FormatsArguments& arguments);

}  // namespace velinor
