#pragma once

#include <QDialog>

class ProjectWorks;
class QLabel;
class QLineEdit;

// "工程属性": the properties of the open construction project an estimator sets by hand. The
// name is shown; the region (工程所在地区) is typed, at most ProjectRegion::MaxLength
// characters on one line.
class ProjectPropertiesDialog : public QDialog
{
    Q_OBJECT
public:
    ProjectPropertiesDialog(ProjectWorks* project, QWidget* parent = nullptr);

    QLineEdit* regionEdit() const { return m_region; }
    // Writes what the dialog holds into the project; true when something changed.
    bool apply();

private:
    ProjectWorks* m_project;
    QLineEdit* m_region;
};
