#pragma once

#include <memory>

class ProjectWorks;

// The bundled sample construction project: a school in Chengdu with two single projects and
// six unit projects (building, plumbing and electrical works in each), realistic bill rows and
// each unit project's own materials for its discipline, one tax method throughout, with
// deliberate disagreements between unit projects of one discipline for the materials pages to
// find.
std::unique_ptr<ProjectWorks> BuildSampleProject();
