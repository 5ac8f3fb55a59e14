// Draws the distributions that the program counts.

const colours = {
  Red: "#ff6a5e",
  Green: "#5fd35f",
  "Green (red rows)": "#5fd35f",
  "Green (blue rows)": "#b5e35a",
  Blue: "#6f9bff",
  Clear: "#e8e8e8",
  Grey: "#e8e8e8"
};

/** A line for each filter or colour; heights are square roots, so that few samples are seen, too. */
export function drawHistogram(canvas, shares, histogram) {
  const context = canvas.getContext("2d");
  const {width, height} = canvas;
  context.clearRect(0, 0, width, height);
  // The ends hold what is clipped, which the text gives.
  const most = Math.sqrt(Math.max(1, ...histogram.filters.flatMap(({counts}) => counts.slice(1, -1))));
  context.globalCompositeOperation = "lighter";
  for (const {name, counts} of histogram.filters) {
    context.strokeStyle = colours[name];
    context.beginPath();
    counts.forEach((count, bin) => {
      const x = ((bin + 0.5) * width) / counts.length;
      context.lineTo(x, height - 2 - (height - 4) * Math.min(Math.sqrt(count) / most, 1));
    });
    context.stroke();
  }
  context.globalCompositeOperation = "source-over";
  const percent = (share) => `${(100 * share).toFixed(share > 0 && share < 0.001 ? 3 : 1)} %`;
  const largest = (key) => Math.max(...histogram.filters.map((filter) => filter[key]));
  shares.textContent = `clipped ${percent(largest("clipped"))}, black ${percent(largest("black"))}` +
      (histogram.reduction > 1 ? `; of the picture at 1/${histogram.reduction}` : "");
}
