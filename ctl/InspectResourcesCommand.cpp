#include "ctl/InspectResourcesCommand.h"

#include "app/PrefsController.h"
#include "ctl/JsonWriter.h"
#include "ctl/Options.h"
#include "platform/Platform.h"

int InspectResourcesCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({Options::json()}, {});
  QString error;
  if (!options.parse(arguments, 0, &error)) return wrongUse(error, terminal);
  const Dictionary resources = PrefsController::resources();
  if (resources.isEmpty()) {
    return reported(QStringLiteral("no resources in \"%1\"").arg(printable(platform().bundle.resourceFolder)),
                    terminal);
  }
  JsonWriter json(terminal.out);
  json.value(resources);
  json.endLine();
  return exitCode::kDone;
}
