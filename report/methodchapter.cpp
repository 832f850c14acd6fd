// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// The chapter on methods: how each figure is calculated, with which settings and sources.

#include "analysis/settingtexts.h"
#include "report/chapters.h"

#include <algorithm>

namespace {

/// The studies whose method a work describes.
enum class Describes { All, Etas, Selection };

struct Work
{
    const char* text;
    Describes studies = Describes::All;
};

const Work literature[] = {
    {"Akaike H (1974). A new look at the statistical model identification. IEEE Transactions on "
     "Automatic Control 19:716-723."},
    {"Box GEP, Muller ME (1958). A note on the generation of random normal deviates. Annals of "
     "Mathematical Statistics 29:610-611.",
     Describes::Etas},
    {"Buckland ST, Burnham KP, Augustin NH (1997). Model selection: an integral part of inference. "
     "Biometrics 53:603-618."},
    {"Burnham KP, Anderson DR (2002). Model Selection and Multimodel Inference, 2nd edition. "
     "Springer.",
     Describes::Selection},
    {"Efron B, Tibshirani RJ (1993). An Introduction to the Bootstrap. Chapman & Hall."},
    {"Golub GH, Van Loan CF. Matrix Computations. Johns Hopkins University Press.",
     Describes::Etas},
    {"Hill MO (1973). Diversity and evenness: a unifying notation and its consequences. Ecology "
     "54:427-432."},
    {"Koehler E, Brown E, Haneuse SJ-PA (2009). On the assessment of Monte Carlo error in "
     "simulation-based statistical analyses. The American Statistician 63:155-162."},
    {"Matsumoto M, Nishimura T (1998). Mersenne Twister: a 623-dimensionally equidistributed "
     "uniform pseudo-random number generator. ACM Transactions on Modeling and Computer Simulation "
     "8:3-30."},
    {"Morris TP, White IR, Crowther MJ (2019). Using simulation studies to evaluate statistical "
     "methods. Statistics in Medicine 38:2074-2102."},
};

bool hasEtas(const Study& study)
{
    return std::any_of(study.endPoints.begin(), study.endPoints.end(),
                       [](const endPoint& definition) { return definition.highestEta > 0; });
}

void addSentences(ReportDocument& document, const Study& study)
{
    document.say(
        QString("Weights: the weight expression of a model gives %1 in each bootstrap sample. The "
                "relative weights of a sample add up to 1; a model without a value has no weight. "
                "On the log scale the proposed expression, minus half of OFV + 2 K, is that of "
                "Akaike's criterion (Akaike 1974; Buckland, Burnham & Augustin 1997).")
            .arg(study.logScale ? "the logarithm of its weight" : "its weight"));
    document.say(
        study.selecting
            ? QString("Model selection: each sample takes its endpoint from the model with the "
                      "highest weight %1 (Burnham & Anderson 2002). The probability of a dose is "
                      "the share of samples whose endpoint lies in the target interval.")
                  .arg(study.individualOfv ? "in that sample" : "in the first sample")
            : QString("Model averaging: for each sample, the weights of the models whose endpoint "
                      "lies in the target interval are added up. The probability of a dose is the "
                      "mean of these sums over the samples, with the weights of %1 (Buckland, "
                      "Burnham & Augustin 1997).")
                  .arg(study.individualOfv ? "each sample" : "the first sample"));
    document.say(
        "The other methods of the first chapter: \"Model Average\" weighs all models; "
        "\"Model Selection\" takes in each sample only the model with the highest weight. "
        "\"Using one ofv per model\" gives all samples the weights of the first row, which "
        "is the original fit.");
    document.say("The minimum effective dose (MED) of a level is the lowest candidate dose at "
                 "which, and at all higher ones, the probability exceeds the level. A probability "
                 "equal to the level is not enough.");
    if (hasEtas(study)) {
        document.say("Endpoints with ETAs are those of a simulated population. Its individuals "
                     "have normally distributed random effects (Box & Muller 1958), whose "
                     "covariance matrix omega enters by its Cholesky factor (Golub & Van Loan).");
    }
    document.say(
        QString(
            "The Monte Carlo error of a probability is 100 sd(z) / sqrt(N), where z is the weight "
            "that each of the N samples puts inside the interval, and sd has the divisor N. It "
            "shows what more bootstrap "
            "samples would change, not what another trial would (Koehler, Brown & Haneuse 2009; "
            "Morris, White & Crowther 2019). To see how certain a MED is, Velmora draws the "
            "samples anew with replacement %1 times, in the same way for all models and doses, and "
            "finds the MED of each resample (Efron & Tibshirani 1993). The generator of these "
            "draws (Matsumoto & Nishimura 1998) starts at %2 each time and does not touch the "
            "random sequence of the results.")
            .arg(resampleCount)
            .arg(resamplingSeed));
    document.say("A quantile of the model-averaged endpoint is the lowest endpoint at which the "
                 "weighted distribution function over samples and models reaches its share. The "
                 "effective number of models is the inverse of the sum of squared weights (Hill "
                 "1973).");
}

void addSettings(ReportDocument& document, const Study& study, const QString& caption)
{
    ReportTable table{caption, {"Setting", "Value"}, "ll", {}};
    const QString population = hasEtas(study) ? populationText(study) : QString();
    table.rows = {
        {"Candidate doses", typed(study.doses)},
        {"Target interval", intervalText(study)},
        {"Method", methodText(study)},
        {"Probability levels (%)", typed(study.levels)},
        {"Weights", study.logScale ? "on the log scale" : "not on the log scale"},
        {"Column of OFV", QString::number(study.colNumOFV)},
        {"Column of THETA1", QString::number(study.colNumTHETA1)},
        {"Population", population.isEmpty() ? "no individuals are simulated" : population}};
    document.add(table);
}

void addCircumstances(ReportDocument& document, const QString& what, const Study& study,
                      const Circumstances& before)
{
    if (before.processors == 0) {
        return;
    }
    QString text = QString("%1: calculated on %2 processor%3.")
                       .arg(what)
                       .arg(before.processors)
                       .arg(before.processors == 1 ? "" : "s");
    if (hasEtas(study)) {
        text += QString(" Of %1 individuals, %2 were actually simulated.")
                    .arg(study.individuals)
                    .arg(simulatedIndividuals(study.individuals, before.processors));
    } else {
        text += " No random numbers were drawn.";
    }
    text += before.randomPosition ? QString(" Before, the sequence of random numbers stood at %1.")
                                        .arg(*before.randomPosition)
                                  : QString(" The position of the random sequence is not known.");
    document.say(text);
}

} // namespace

void addMethods(ReportDocument& document, const ReportContext& context)
{
    const ReportInputs& inputs = context.inputs;
    const Study& study =
        context.results.isEmpty() ? inputs.now.study : context.results.first().made;
    document.add(ReportHeading{"Methods and settings"});
    addSentences(document, study);
    document.add(ReportHeading{"Settings", 2});
    addSettings(document, study,
                context.results.isEmpty() ? QString("Settings") : context.results.first().name);
    for (int result = 1; result < context.results.size(); ++result) {
        addSettings(document, context.results.at(result).made, context.results.at(result).name);
    }
    document.add(ReportHeading{"Calculation", 2});
    for (const ReportedResult& result : context.results) {
        addCircumstances(document, result.name, result.made, result.before);
    }
    const TruthComparison& truth = inputs.results.truth;
    if (!truth.made.trueRows.isEmpty()) {
        addCircumstances(document, "Theoretical MEDs", truth.made.inputs, truth.before);
    }
    const ReportSource& source = inputs.source;
    document.say(
        QString("Written by %1 with Qt %2 on %3, on a machine with %4 processor%5.")
            .arg(source.study.program, source.study.qtVersion, source.date.toString(Qt::ISODate))
            .arg(processorCount())
            .arg(processorCount() == 1 ? "" : "s"));
    document.add(ReportHeading{"Literature", 2});
    ReportList list;
    for (const Work& work : literature) {
        const bool isCited = work.studies == Describes::Etas        ? hasEtas(study)
                             : work.studies == Describes::Selection ? study.selecting
                                                                    : true;
        if (isCited) {
            list.texts.append(work.text);
        }
    }
    document.add(list);
}
