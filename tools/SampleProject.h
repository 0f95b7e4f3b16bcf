#pragma once

#include <memory>

class ProjectWorks;

// The bundled sample construction project: a school in Chengdu with two single projects and
// six unit projects, realistic bill rows and a few hundred materials per unit project, with
// deliberate disagreements between unit projects for the materials pages to find.
std::unique_ptr<ProjectWorks> BuildSampleProject();
