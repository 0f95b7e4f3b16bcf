#pragma once

class ProjectWorks;

// The project's taxing method.
class JsMsBusiness
{
public:
    // Taxed under VAT's general method unless the pricing model (item 6) says "简易计税".
    static bool IsVATProject(ProjectWorks* works);
};
