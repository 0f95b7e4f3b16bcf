#pragma once

struct TenderDocument;
class ProjectWorks;

// The tender files shipped beside the sample project (appdir/Samples), made from it:
// the tenderer's provisional list of every unit project overlaps the bid's only partly (some
// models (规格型号) spelt otherwise, materials the bid lacks, bid materials left out), plus the
// evaluated materials. The unfitting one has a unit project renamed and one more added.
TenderDocument BuildSampleTender(ProjectWorks* sample, bool fitting);
