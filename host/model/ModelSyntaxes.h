#pragma once

#include "InputLines.h"
#include "ModelFile.h"
#include "ModelRecorder.h"

/// The syntaxes of models, one source file each (NastranModel.cpp).
namespace host {

void ReadAbaqusModel(InputLines& lines, ModelRecorder& model);
void ReadGmshModel(ModelFile& file, ModelRecorder& model);
void ReadLsDynaModel(InputLines& lines, ModelRecorder& model);
void ReadNastranModel(InputLines& lines, ModelRecorder& model);
void ReadStlModel(ModelFile& file, ModelRecorder& model);

}  // namespace host
