#include "tools/demo/DemoPlan.h"

#include "tools/demo/PlanBuilder.h"

DemoPlan planDemoLibrary(quint64 seed) {
  PlanBuilder builder(seed);
  builder.addAlbums();
  builder.addDuplicates();
  builder.addLookalikes();
  builder.addMisspellings();
  builder.addMissing();
  builder.addOrphans();
  builder.addNonSongs();
  builder.addNameVariants();
  return builder.finish();
}
