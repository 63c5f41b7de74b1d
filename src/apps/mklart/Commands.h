#pragma once
// What the commands do. Each gives the exit status and raises mkl::RunTimeError where it fails.

namespace mkl {

class Invocation;

int runNew(const Invocation& call);
int runDemo(const Invocation& call);
int runImport(const Invocation& call);
int runCopy(const Invocation& call);
int runInfo(const Invocation& call);
int runTree(const Invocation& call);
int runCheck(const Invocation& call);
int runRepair(const Invocation& call);
int runReplica(const Invocation& call);
int runSql(const Invocation& call);
int runFind(const Invocation& call);

} // namespace mkl
