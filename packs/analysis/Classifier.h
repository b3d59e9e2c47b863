#pragma once

#include "packs/analysis/StrokeFigures.h"

#include <cstddef>
#include <vector>

/// Tells two kinds of strokes apart: logistic regression with a penalty on large weights.
namespace vornic::packs {

class Classifier {
  public:
    /// Trained on both kinds, which weigh the same however many they are. Figures are brought to
    /// mean 0 and deviation 1 over the training; one that is not known counts as the mean. The
    /// same strokes give the same classifier. Thread: any.
    Classifier(const std::vector<Figures>& modelled, const std::vector<Figures>& real);

    /// Higher for what looks modelled.
    double score(const Figures& stroke) const;

    /// What each figure adds to `score`, on the average of `strokes`.
    Figures parts(const std::vector<Figures>& strokes) const;

  private:
    std::vector<Figures> scaled(const std::vector<Figures>& strokes) const;

    Figures mean_, deviation_, weights_;
};

/// The share of pairs in which the modelled stroke has the higher score, equal ones counting half:
/// 1 if they can always be told apart, 0.5 if never.
double areaUnderCurve(const std::vector<double>& modelled, const std::vector<double>& real);

} // namespace vornic::packs
